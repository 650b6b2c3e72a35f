#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

#include "probe/platform/main_queue.h"

namespace tarnix::fakes {

/// Runs closures when the test says so, on virtual time. The main thread is the thread that made
/// the queue. Other threads may hand in closures.
class FakeMainQueue : public platform::MainQueue {
 public:
  using Nanoseconds = std::chrono::nanoseconds;

  void async(Closure closure) override;
  void asyncAfter(Nanoseconds delay, Closure closure) override;
  std::unique_ptr<platform::Timer> scheduledTimer(Nanoseconds interval, Closure closure) override;
  bool isCurrent() const override { return std::this_thread::get_id() == mainThread_; }

  /// Runs what has been handed in, and what that hands in. Returns whether anything ran.
  bool runReady();

  /// Lets virtual time pass: everything that falls due runs at its time, in order.
  void advance(Nanoseconds duration);

  /// Closures that wait for their time, and timers that run.
  std::size_t scheduledCount() const;

 private:
  struct Ticking;
  class FakeTimer;

  void scheduleTick(const std::shared_ptr<Ticking>& ticking);
  bool popReady(Closure& closure);
  bool popDue(Nanoseconds limit, Closure& closure);

  const std::thread::id mainThread_ = std::this_thread::get_id();
  mutable std::mutex mutex_;
  Nanoseconds now_{0};
  std::deque<Closure> ready_;
  // Equal times keep the order in which they were given.
  std::multimap<Nanoseconds, Closure> scheduled_;
};

}  // namespace tarnix::fakes
