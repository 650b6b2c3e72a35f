#pragma once

#include <chrono>

#include "probe/platform/clock.h"

namespace tarnix::fakes {

/// Stands still until it is set.
class FakeClock : public platform::Clock {
 public:
  std::chrono::system_clock::time_point now() const override { return time; }

  /// 2001-01-01 00:00:00 UTC, which travels as 0.
  std::chrono::system_clock::time_point time =
      std::chrono::sys_days{std::chrono::year{2001} / std::chrono::January / 1};
};

}  // namespace tarnix::fakes
