#include <QApplication>
#include <QEvent>
#include <QGridLayout>
#include <QPushButton>
#include <QQmlApplicationEngine>
#include <QSocketNotifier>
#include <QUrl>
#include <QWidget>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <iostream>
#include <memory>
#include <string>
#include <utility>

namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;

/// Of the processor, for the main thread: what others do on the machine is not counted.
Milliseconds now() {
  timespec time{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

/// Times what its event loop hands out. Between two of these the loop is free for others, so each
/// is one unbroken hold of the main thread.
class WatchedApplication : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    // The receiver may be gone afterwards.
    const bool isForWindow = receiver->isWindowType();
    const Milliseconds begin = now();
    ++depth_;
    const bool result = QApplication::notify(receiver, event);
    --depth_;
    const Milliseconds time = now() - begin;
    if (depth_ == 1) {
      inner_ += time;
    } else if (depth_ == 0) {
      note(isForWindow, time, std::exchange(inner_, Milliseconds::zero()));
    }
    return result;
  }

  /// What was held since this was last called.
  void tell() {
    std::fprintf(stderr, "held %.3f reaction %.3f windows %.3f\n", held_.count(), reaction_.count(),
                 windows_.count());
    held_ = reaction_ = windows_ = Milliseconds::zero();
    isTelling_ = true;
  }

 private:
  void note(bool isForWindow, Milliseconds time, Milliseconds inner) {
    if (std::exchange(isTelling_, false)) {
      return;
    }
    if (isForWindow) {
      windows_ += time;
    } else if (time - inner > held_) {
      held_ = time - inner;
      reaction_ = inner;
    }
  }

  int depth_ = 0;
  /// Of what is being handed out: how much of it went into events that it sent itself.
  Milliseconds inner_{};
  Milliseconds held_{};
  Milliseconds reaction_{};
  Milliseconds windows_{};
  bool isTelling_ = false;
};

/// As many buttons as there are to be, in a square.
std::unique_ptr<QWidget> makeWidgets(int count) {
  auto window = std::make_unique<QWidget>();
  auto* const grid = new QGridLayout(window.get());
  grid->setSpacing(0);
  const int columns = static_cast<int>(std::ceil(std::sqrt(count)));
  for (int index = 0; index < count; ++index) {
    auto* const button = new QPushButton(QStringLiteral("Item %1").arg(index));
    button->setMinimumSize(1, 1);
    grid->addWidget(button, index / columns, index % columns);
  }
  window->resize(1000, 1000);
  window->show();
  return window;
}

}  // namespace

/// Shows what stands first on the command line: a QML file, or "widgets", as many as the number
/// that stands second. For each line on standard input it says on standard error how long its main
/// thread was held since the last one, in milliseconds of processor time: by the longest of all
/// events that were for no window, without the events that were sent from within; by these; and by
/// all events for windows together, which are frames and what a person does.
int main(int argc, char** argv) {
  WatchedApplication application(argc, argv);
  const QString shown = QString::fromLocal8Bit(argv[1]);
  std::unique_ptr<QWidget> widgets;
  QQmlApplicationEngine engine;
  if (shown == QLatin1String("widgets")) {
    widgets = makeWidgets(std::atoi(argv[2]));
  } else {
    engine.load(QUrl::fromLocalFile(shown));
  }
  QSocketNotifier questions(0, QSocketNotifier::Read);
  QObject::connect(&questions, &QSocketNotifier::activated, [&application] {
    std::string line;
    if (std::getline(std::cin, line)) {
      application.tell();
    } else {
      QCoreApplication::quit();
    }
  });
  return QCoreApplication::exec();
}
