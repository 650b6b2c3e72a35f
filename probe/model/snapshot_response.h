#pragma once

#include <string>
#include <tuple>
#include <vector>

#include "probe/link/record.h"
#include "probe/model/snapshot_element.h"

namespace tarnix {

/// What "response.snapshot" carries.
struct SnapshotResponse {
  /// Name of the screen on view.
  std::string screen;
  /// From top to bottom.
  std::vector<SnapshotElement> elements;

  bool operator==(const SnapshotResponse&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"screen", &SnapshotResponse::screen},
                      Field{"elements", &SnapshotResponse::elements}};
  }
};

}  // namespace tarnix
