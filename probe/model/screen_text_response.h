#pragma once

#include <string>
#include <tuple>
#include <vector>

#include "probe/link/record.h"

namespace tarnix {

/// What "response.screenText" carries.
struct ScreenTextResponse {
  /// Name of the screen on view.
  std::string screen;
  /// One for each element, from top to bottom.
  std::vector<std::string> lines;

  bool operator==(const ScreenTextResponse&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"screen", &ScreenTextResponse::screen},
                      Field{"lines", &ScreenTextResponse::lines}};
  }
};

}  // namespace tarnix
