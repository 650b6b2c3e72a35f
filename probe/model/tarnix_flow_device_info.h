#pragma once

#include <cstdint>
#include <string>
#include <tuple>

#include "probe/link/record.h"

namespace tarnix {

/// The device on which a flow was recorded. Sizes in device-independent pixels.
struct TarnixFlowDeviceInfo {
  std::string name;
  std::int64_t screenWidth = 0;
  std::int64_t screenHeight = 0;
  std::int64_t scale = 0;

  bool operator==(const TarnixFlowDeviceInfo&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"name", &TarnixFlowDeviceInfo::name},
                      Field{"screenWidth", &TarnixFlowDeviceInfo::screenWidth},
                      Field{"screenHeight", &TarnixFlowDeviceInfo::screenHeight},
                      Field{"scale", &TarnixFlowDeviceInfo::scale}};
  }
};

}  // namespace tarnix
