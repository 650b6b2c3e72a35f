#pragma once

#include <chrono>

namespace tarnix::platform {

/// Time of day. Any thread.
class Clock {
 public:
  virtual ~Clock() = default;

  virtual std::chrono::system_clock::time_point now() const = 0;
};

}  // namespace tarnix::platform
