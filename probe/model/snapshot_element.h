#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

#include "probe/link/record.h"

namespace tarnix {

/// A view. All numbers are whole device-independent pixels.
struct SnapshotElement {
  std::optional<std::string> label;
  /// The name that its author gave it.
  std::optional<std::string> identifier;
  std::string type;
  std::int64_t x = 0;
  std::int64_t y = 0;
  std::int64_t width = 0;
  std::int64_t height = 0;
  /// Whether it reacts to touch.
  bool interactive = false;

  bool operator==(const SnapshotElement&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"label", &SnapshotElement::label},
                      Field{"identifier", &SnapshotElement::identifier},
                      Field{"type", &SnapshotElement::type},
                      Field{"x", &SnapshotElement::x},
                      Field{"y", &SnapshotElement::y},
                      Field{"width", &SnapshotElement::width},
                      Field{"height", &SnapshotElement::height},
                      Field{"interactive", &SnapshotElement::interactive}};
  }
};

}  // namespace tarnix
