#pragma once

#include <chrono>
#include <compare>

namespace tarnix {

/// A point in time as it travels: floating-point seconds since 2001-01-01 00:00:00 UTC.
struct Timestamp {
  double secondsSinceReference = 0;

  static Timestamp from(std::chrono::system_clock::time_point time);

  /// Rounded to the microsecond. Times that the system clock cannot hold (before 1677, after 2262)
  /// are moved to the nearest it can, since a peer may send any number.
  std::chrono::system_clock::time_point toTimePoint() const;

  auto operator<=>(const Timestamp&) const = default;
};

}  // namespace tarnix
