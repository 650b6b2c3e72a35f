#include "platforms/qt6/base/main_loop_timer.h"

#include <QCoreApplication>
#include <set>
#include <utility>

namespace tarnix::qt6 {

class MainLoopTimer::Ticker : public QObject {
 public:
  Ticker(std::chrono::milliseconds interval, platform::MainQueue::Closure closure)
      : interval_(interval),
        closure_(std::make_shared<platform::MainQueue::Closure>(std::move(closure))) {
    all().insert(this);
    resume();
  }

  ~Ticker() override { all().erase(this); }

  static std::set<Ticker*>& all() {
    static std::set<Ticker*>& instance = *new std::set<Ticker*>;
    return instance;
  }

  void resume() {
    if (timer_ == 0 && closure_ != nullptr && QCoreApplication::instance() != nullptr) {
      timer_ = startTimer(interval_, Qt::PreciseTimer);
    }
  }

  void suspend() {
    if (timer_ != 0) {
      killTimer(std::exchange(timer_, 0));
    }
  }

  void end() {
    suspend();
    closure_ = nullptr;
  }

 protected:
  void timerEvent(QTimerEvent*) override {
    // Held here, since the closure may end its own timer.
    if (const std::shared_ptr<platform::MainQueue::Closure> closure = closure_) {
      (*closure)();
    }
  }

 private:
  const std::chrono::milliseconds interval_;
  std::shared_ptr<platform::MainQueue::Closure> closure_;
  int timer_ = 0;
};

MainLoopTimer::MainLoopTimer(std::chrono::milliseconds interval,
                             platform::MainQueue::Closure closure)
    : ticker_(new Ticker(interval, std::move(closure))) {}

MainLoopTimer::~MainLoopTimer() {
  ticker_->end();
  if (QCoreApplication::instance() != nullptr) {
    ticker_->deleteLater();
  } else {
    delete ticker_;
  }
}

void MainLoopTimer::suspendAll() {
  for (Ticker* ticker : Ticker::all()) {
    ticker->suspend();
  }
}

void MainLoopTimer::resumeAll() {
  for (Ticker* ticker : Ticker::all()) {
    ticker->resume();
  }
}

}  // namespace tarnix::qt6
