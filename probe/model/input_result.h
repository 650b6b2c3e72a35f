#pragma once

#include <string>
#include <tuple>

#include "probe/link/record.h"

namespace tarnix {

/// What became of a tap, a swipe or typed text: what "response.tap", "response.swipe" and
/// "response.typeText" carry.
struct InputResult {
  bool success = false;
  /// What was done, or why nothing was. In English, for people.
  std::string message;

  bool operator==(const InputResult&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"success", &InputResult::success},
                      Field{"message", &InputResult::message}};
  }
};

}  // namespace tarnix
