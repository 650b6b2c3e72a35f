#pragma once

#include <cstdint>
#include <limits>

namespace tarnix {

/// The integer part of `number`. Beyond what 64 bits hold it is the nearest that they do, and 0 for
/// what is no number: an odd coordinate is no reason to end the host.
constexpr std::int64_t truncatedTowardZero(double number) {
  constexpr double range = 9'223'372'036'854'775'808.0;  // 2^63
  if (number >= range) {
    return std::numeric_limits<std::int64_t>::max();
  }
  if (number < -range) {
    return std::numeric_limits<std::int64_t>::min();
  }
  return number != number ? 0 : static_cast<std::int64_t>(number);
}

}  // namespace tarnix
