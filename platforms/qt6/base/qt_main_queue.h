#pragma once

#include <atomic>
#include <deque>
#include <mutex>
#include <thread>

#include "probe/platform/main_queue.h"

class QObject;

namespace tarnix::qt6 {

/// The main queue on the toolkit's event loop. One event wakes the loop for many closures. When the
/// application object has gone closures stay where they are, until there is another one.
class QtMainQueue : public platform::MainQueue {
 public:
  static QtMainQueue& shared();

  /// The application object is there: what has been handed in runs once its loop does. Main thread.
  void start();

  /// The application object is about to go. Main thread.
  void stop();

  void async(Closure closure) override;
  void asyncAfter(std::chrono::nanoseconds delay, Closure closure) override;
  std::unique_ptr<platform::Timer> scheduledTimer(std::chrono::nanoseconds interval,
                                                  Closure closure) override;
  bool isCurrent() const override;

 private:
  class Receiver;

  QtMainQueue() = default;
  void runBatch();
  void postWakeUp();

  mutable std::mutex mutex_;
  std::deque<Closure> closures_;
  // Whether an event is on its way. Guarded by the mutex.
  bool isWakeUpPosted_ = false;
  // Set while there is an application object. Guarded by the mutex.
  Receiver* receiver_ = nullptr;
  // The thread of the application object, once there was one.
  std::atomic<std::thread::id> mainThread_;
};

}  // namespace tarnix::qt6
