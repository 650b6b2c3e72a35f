// Shows widgets, or the window of a QML file that is named, and does what its standard input says:
// each line is a word and maybe a number. For QML they go to the window's function "act".

#include <QApplication>
#include <QQmlApplicationEngine>
#include <QSocketNotifier>
#include <QTextStream>
#include <QVariant>
#include <cstdio>
#include <functional>
#include <iostream>
#include <memory>
#include <string>

#include "tests/integration/screen_names/widget_window.h"

namespace {

using Act = std::function<void(const QString&, int)>;

void follow(QSocketNotifier& input, const Act& act) {
  QObject::connect(&input, &QSocketNotifier::activated, &input, [act, &input] {
    std::string line;
    if (!std::getline(std::cin, line)) {
      input.setEnabled(false);
      QCoreApplication::quit();
      return;
    }
    QString text = QString::fromStdString(line);
    QTextStream words(&text);
    QString word;
    int number = 0;
    words >> word >> number;
    act(word, number);
    std::puts("done");
    std::fflush(stdout);
  });
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  QSocketNotifier input(fileno(stdin), QSocketNotifier::Read);
  std::unique_ptr<QQmlApplicationEngine> engine;
  std::unique_ptr<tarnix::integration::MainWindow> window;
  if (argc > 1) {
    engine = std::make_unique<QQmlApplicationEngine>(QString::fromLocal8Bit(argv[1]));
    if (engine->rootObjects().isEmpty()) {
      return 1;
    }
    QObject* const root = engine->rootObjects().constFirst();
    follow(input, [root](const QString& word, int number) {
      QMetaObject::invokeMethod(root, "act", Q_ARG(QVariant, word), Q_ARG(QVariant, number));
    });
  } else {
    window = std::make_unique<tarnix::integration::MainWindow>();
    window->show();
    follow(input, [&window](const QString& word, int number) { window->act(word, number); });
  }
  return QApplication::exec();
}
