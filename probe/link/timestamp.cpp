#include "probe/link/timestamp.h"

#include <algorithm>
#include <cmath>

namespace tarnix {
namespace {

// 2001-01-01 00:00:00 UTC, counted from 1970-01-01 00:00:00 UTC.
constexpr double referenceSecondsSince1970 = 978'307'200;
// The system clock counts nanoseconds in 64 bits: 292 years to either side of 1970.
constexpr double clockRangeSeconds = 9.2e9;

}  // namespace

Timestamp Timestamp::from(std::chrono::system_clock::time_point time) {
  const std::chrono::duration<double> since1970 = time.time_since_epoch();
  return {since1970.count() - referenceSecondsSince1970};
}

std::chrono::system_clock::time_point Timestamp::toTimePoint() const {
  const double wanted = secondsSinceReference + referenceSecondsSince1970;
  const double since1970 =
      std::isnan(wanted) ? 0 : std::clamp(wanted, -clockRangeSeconds, clockRangeSeconds);
  return std::chrono::system_clock::time_point{
      std::chrono::microseconds{std::llround(since1970 * 1e6)}};
}

}  // namespace tarnix
