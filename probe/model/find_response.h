#pragma once

#include <string>
#include <tuple>
#include <vector>

#include "probe/link/record.h"
#include "probe/model/found_element.h"

namespace tarnix {

/// What "response.findElement" carries.
struct FindResponse {
  /// Name of the screen on view.
  std::string screen;
  /// The text that was looked for.
  std::string query;
  /// From top to bottom.
  std::vector<FoundElement> results;

  bool operator==(const FindResponse&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"screen", &FindResponse::screen}, Field{"query", &FindResponse::query},
                      Field{"results", &FindResponse::results}};
  }
};

}  // namespace tarnix
