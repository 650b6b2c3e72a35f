#pragma once

#include <string>
#include <tuple>

#include "probe/link/bytes.h"
#include "probe/link/record.h"

namespace tarnix {

/// What "response.screenshot" carries.
struct ScreenshotResponse {
  /// Name of the screen on view.
  std::string screen;
  /// A PNG file.
  Bytes base64PNG;

  bool operator==(const ScreenshotResponse&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"screen", &ScreenshotResponse::screen},
                      Field{"base64PNG", &ScreenshotResponse::base64PNG}};
  }
};

}  // namespace tarnix
