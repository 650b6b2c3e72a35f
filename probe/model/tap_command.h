#pragma once

#include <cstdint>
#include <tuple>

#include "probe/link/record.h"

namespace tarnix {

/// What "command.tap" carries: a point of the key window, in device-independent pixels.
struct TapCommand {
  std::int64_t x = 0;
  std::int64_t y = 0;

  bool operator==(const TapCommand&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"x", &TapCommand::x}, Field{"y", &TapCommand::y}};
  }
};

}  // namespace tarnix
