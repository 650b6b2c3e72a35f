#pragma once

#include <cstdint>
#include <optional>
#include <tuple>

#include "probe/link/record.h"

namespace tarnix {

/// What "command.swipe" carries: where a finger would start and where it would end, in
/// device-independent pixels of the key window.
struct SwipeCommand {
  std::int64_t x1 = 0;
  std::int64_t y1 = 0;
  std::int64_t x2 = 0;
  std::int64_t y2 = 0;
  /// Taken from companions that send it; a swipe lasts as long as the platform's own scrolling.
  std::optional<double> duration;

  bool operator==(const SwipeCommand&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"x1", &SwipeCommand::x1}, Field{"y1", &SwipeCommand::y1},
                      Field{"x2", &SwipeCommand::x2}, Field{"y2", &SwipeCommand::y2},
                      Field{"duration", &SwipeCommand::duration}};
  }
};

}  // namespace tarnix
