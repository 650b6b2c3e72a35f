#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace tarnix::platform {

/// A repeating timer on the main thread. Destroying it ends it, also from inside its own closure.
class Timer {
 public:
  virtual ~Timer() = default;
};

/// Runs closures on the host's main thread, in the order in which they were given. Accepts work
/// before the host has an application object or an event loop, and runs it once there is a loop.
/// Closures do not throw. Everything but `scheduledTimer` may be called from any thread.
class MainQueue {
 public:
  using Closure = std::function<void()>;

  virtual ~MainQueue() = default;

  virtual void async(Closure closure) = 0;

  /// Runs `closure` once, not before `delay` has passed since this call.
  virtual void asyncAfter(std::chrono::nanoseconds delay, Closure closure) = 0;

  /// Main thread. First fires one `interval` from now. A tick that the loop was too busy for is
  /// left out, not made up for.
  virtual std::unique_ptr<Timer> scheduledTimer(std::chrono::nanoseconds interval,
                                                Closure closure) = 0;

  /// Whether the calling thread is the main thread.
  virtual bool isCurrent() const = 0;
};

}  // namespace tarnix::platform
