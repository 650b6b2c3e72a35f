#pragma once

#include "probe/platform/clock.h"

namespace tarnix::linux_platform {

/// The machine's time of day.
class SystemClock final : public platform::Clock {
 public:
  static SystemClock& shared() {
    static SystemClock& instance = *new SystemClock;
    return instance;
  }

  std::chrono::system_clock::time_point now() const override {
    return std::chrono::system_clock::now();
  }
};

}  // namespace tarnix::linux_platform
