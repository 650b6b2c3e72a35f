// An application whose main loop is busy for a known part of the time. Arguments: for how many
// milliseconds, and how often.
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QRasterWindow>
#include <QTimer>
#include <cstdlib>

int main(int argumentCount, char** arguments) {
  QGuiApplication application(argumentCount, arguments);
  QRasterWindow window;
  window.show();
  const int busy = argumentCount > 1 ? std::atoi(arguments[1]) : 0;
  const int period = argumentCount > 2 ? std::atoi(arguments[2]) : 0;
  QTimer timer;
  timer.setTimerType(Qt::PreciseTimer);
  QObject::connect(&timer, &QTimer::timeout, &timer, [busy] {
    QElapsedTimer elapsed;
    elapsed.start();
    while (elapsed.elapsed() < busy) {
    }
  });
  if (busy > 0) {
    timer.start(period);
  }
  return QGuiApplication::exec();
}
