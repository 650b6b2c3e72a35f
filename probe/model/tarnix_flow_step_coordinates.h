#pragma once

#include <tuple>

#include "probe/link/record.h"

namespace tarnix {

/// A point on the device's screen, in device-independent pixels.
struct TarnixFlowStepCoordinates {
  double x = 0;
  double y = 0;

  bool operator==(const TarnixFlowStepCoordinates&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"x", &TarnixFlowStepCoordinates::x},
                      Field{"y", &TarnixFlowStepCoordinates::y}};
  }
};

}  // namespace tarnix
