#pragma once

#include <cstdint>
#include <string>
#include <tuple>

#include "probe/link/record.h"

namespace tarnix {

/// What "response.screenHTML" carries.
struct ScreenHTMLResponse {
  /// Name of the screen on view, not escaped.
  std::string screen;
  /// The document of screen_html_renderer.h.
  std::string html;
  /// Elements on the screen; the document has one line for each.
  std::int64_t elementCount = 0;

  bool operator==(const ScreenHTMLResponse&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"screen", &ScreenHTMLResponse::screen},
                      Field{"html", &ScreenHTMLResponse::html},
                      Field{"elementCount", &ScreenHTMLResponse::elementCount}};
  }
};

}  // namespace tarnix
