#pragma once

#include <avahi-common/watch.h>

#include <chrono>
#include <functional>

namespace tarnix::linux_platform {

/// Runs a closure once, later, on the loop's thread. Outlived by its loop.
class EventTimer {
 public:
  EventTimer(const AvahiPoll* poll, std::function<void()> closure);
  ~EventTimer();
  EventTimer(const EventTimer&) = delete;
  EventTimer& operator=(const EventTimer&) = delete;

  /// Set again, it forgets the earlier time.
  void set(std::chrono::milliseconds delay);
  void clear();

 private:
  const AvahiPoll* const poll_;
  const std::function<void()> closure_;
  AvahiTimeout* const timeout_;
};

}  // namespace tarnix::linux_platform
