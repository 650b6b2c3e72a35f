#include "probe/model/number_description.h"

#include <array>
#include <charconv>
#include <cmath>

namespace tarnix {
namespace {

// The range in which the digits are written out; it spans what sixteen digits can.
constexpr double smallestWrittenOut = 1e-4;
constexpr double firstTooLarge = 1e16;

}  // namespace

std::string describeNumber(double number) {
  const double magnitude = std::abs(number);
  const bool isWrittenOut =
      magnitude == 0 || (magnitude >= smallestWrittenOut && magnitude < firstTooLarge);
  // Sign, seventeen digits, point, leading zeroes or exponent.
  std::array<char, 32> text{};
  const std::to_chars_result result =
      std::to_chars(text.data(), text.data() + text.size(), number,
                    isWrittenOut ? std::chars_format::fixed : std::chars_format::scientific);
  return {text.data(), result.ptr};
}

}  // namespace tarnix
