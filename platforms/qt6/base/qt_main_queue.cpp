#include "platforms/qt6/base/qt_main_queue.h"

#include <unistd.h>

#include <QBasicTimer>
#include <QCoreApplication>
#include <QEvent>
#include <QHash>
#include <QObject>
#include <QThread>
#include <QTimerEvent>
#include <utility>

#include "platforms/qt6/base/main_loop_timer.h"

namespace tarnix::qt6 {

namespace {

// So much at a time, then the host's own events have their turn.
constexpr std::size_t closuresPerTurn = 64;

QEvent::Type wakeUpType() {
  // A number of our own: an application's event filters see this event too.
  static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
  return type;
}

using Clock = std::chrono::steady_clock;

}  // namespace

/// Takes the events of the queue, and holds the closures that wait for their time. Main thread.
class QtMainQueue::Receiver : public QObject {
 public:
  explicit Receiver(QtMainQueue& queue) : queue_(queue) {}

  void runAt(Clock::time_point due, Closure closure) {
    const auto remaining = std::max(due - Clock::now(), Clock::duration::zero());
    const int timer =
        startTimer(std::chrono::ceil<std::chrono::milliseconds>(remaining), Qt::PreciseTimer);
    waiting_.insert(timer, {due, std::move(closure)});
  }

  /// Lets the timers go while there is a loop to end them; `resume` starts them again.
  void suspend() {
    for (auto entry = waiting_.cbegin(); entry != waiting_.cend(); ++entry) {
      killTimer(entry.key());
      suspended_.push_back(entry.value());
    }
    waiting_.clear();
  }

  void resume() {
    for (Waiting& waiting : std::exchange(suspended_, {})) {
      runAt(waiting.due, std::move(waiting.closure));
    }
  }

 protected:
  bool event(QEvent* event) override {
    if (event->type() == wakeUpType()) {
      queue_.runBatch();
      return true;
    }
    return QObject::event(event);
  }

  void timerEvent(QTimerEvent* event) override {
    killTimer(event->timerId());
    Waiting waiting = waiting_.take(event->timerId());
    if (Clock::now() < waiting.due) {
      // The loop counts whole milliseconds from when it last looked at the clock.
      runAt(waiting.due, std::move(waiting.closure));
    } else if (waiting.closure) {
      waiting.closure();
    }
  }

 private:
  struct Waiting {
    Clock::time_point due;
    Closure closure;
  };

  QtMainQueue& queue_;
  QHash<int, Waiting> waiting_;
  std::vector<Waiting> suspended_;
};

QtMainQueue& QtMainQueue::shared() {
  // Not an object of the namespace: the preloaded library's initialiser runs before those.
  static QtMainQueue& instance = *new QtMainQueue;
  return instance;
}

void QtMainQueue::start() {
  // Lives as long as the process: events for it may still be on their way when the application
  // object goes.
  static Receiver* receiver = nullptr;
  mainThread_ = std::this_thread::get_id();
  if (receiver == nullptr || receiver->thread() != QThread::currentThread()) {
    receiver = new Receiver(*this);
  }
  {
    const std::lock_guard lock(mutex_);
    receiver_ = receiver;
    // What was posted to an earlier application object went with it.
    isWakeUpPosted_ = false;
    postWakeUp();
  }
  receiver->resume();
  MainLoopTimer::resumeAll();
}

void QtMainQueue::stop() {
  Receiver* receiver = nullptr;
  {
    const std::lock_guard lock(mutex_);
    std::swap(receiver, receiver_);
  }
  if (receiver != nullptr) {
    receiver->suspend();
  }
  MainLoopTimer::suspendAll();
}

void QtMainQueue::async(Closure closure) {
  const std::lock_guard lock(mutex_);
  closures_.push_back(std::move(closure));
  postWakeUp();
}

void QtMainQueue::asyncAfter(std::chrono::nanoseconds delay, Closure closure) {
  const Clock::time_point due = Clock::now() + std::chrono::duration_cast<Clock::duration>(delay);
  async([this, due, closure = std::move(closure)]() mutable {
    Receiver* receiver = nullptr;
    {
      const std::lock_guard lock(mutex_);
      receiver = receiver_;
    }
    if (receiver != nullptr) {
      receiver->runAt(due, std::move(closure));
    }
  });
}

std::unique_ptr<platform::Timer> QtMainQueue::scheduledTimer(std::chrono::nanoseconds interval,
                                                             Closure closure) {
  return std::make_unique<MainLoopTimer>(std::chrono::ceil<std::chrono::milliseconds>(interval),
                                         std::move(closure));
}

bool QtMainQueue::isCurrent() const {
  const std::thread::id mainThread = mainThread_;
  return mainThread == std::thread::id() ? gettid() == getpid()
                                         : mainThread == std::this_thread::get_id();
}

void QtMainQueue::postWakeUp() {
  if (receiver_ != nullptr && !isWakeUpPosted_ && !closures_.empty()) {
    isWakeUpPosted_ = true;
    QCoreApplication::postEvent(receiver_, new QEvent(wakeUpType()));
  }
}

void QtMainQueue::runBatch() {
  std::unique_lock lock(mutex_);
  isWakeUpPosted_ = false;
  // What the closures hand in waits for a later turn.
  for (std::size_t left = std::min(closures_.size(), closuresPerTurn);
       left > 0 && !closures_.empty() && receiver_ != nullptr; --left) {
    Closure closure = std::move(closures_.front());
    closures_.pop_front();
    // Before the closure runs: it may open a dialog that has a loop of its own, and what comes
    // after it must not wait until the dialog closes.
    postWakeUp();
    lock.unlock();
    closure();
    closure = nullptr;
    lock.lock();
  }
  postWakeUp();
}

}  // namespace tarnix::qt6
