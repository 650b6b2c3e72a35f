#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace tarnix::platform {

/// Pixels of 4 bytes, in rows from the top: blue, green, red, alpha, the colours multiplied with
/// alpha.
struct Picture {
  /// In pixels.
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  /// From one row to the next, in bytes; at least 4 * width.
  std::size_t stride = 0;
  /// Of `stride` * `height` bytes, kept alive by the pointer.
  std::shared_ptr<const std::uint8_t> pixels;
};

}  // namespace tarnix::platform
