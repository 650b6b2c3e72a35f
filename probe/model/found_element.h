#pragma once

#include <cstdint>
#include <string>
#include <tuple>

#include "probe/link/record.h"

namespace tarnix {

/// An element whose label fits. All numbers are whole device-independent pixels.
struct FoundElement {
  std::string label;
  std::string type;
  std::int64_t x = 0;
  std::int64_t y = 0;
  std::int64_t width = 0;
  std::int64_t height = 0;
  /// The point to tap it at.
  std::int64_t centerX = 0;
  std::int64_t centerY = 0;
  bool isButton = false;

  bool operator==(const FoundElement&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"label", &FoundElement::label},
                      Field{"type", &FoundElement::type},
                      Field{"x", &FoundElement::x},
                      Field{"y", &FoundElement::y},
                      Field{"width", &FoundElement::width},
                      Field{"height", &FoundElement::height},
                      Field{"centerX", &FoundElement::centerX},
                      Field{"centerY", &FoundElement::centerY},
                      Field{"isButton", &FoundElement::isButton}};
  }
};

}  // namespace tarnix
