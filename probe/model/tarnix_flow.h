#pragma once

#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "probe/link/record.h"
#include "probe/link/timestamp.h"
#include "probe/model/tarnix_flow_device_info.h"
#include "probe/model/tarnix_flow_step.h"
#include "probe/model/uuid.h"

namespace tarnix {

/// A recorded user flow.
struct TarnixFlow {
  using DeviceInfo = TarnixFlowDeviceInfo;

  Uuid id;
  std::string name;
  std::string description;
  std::vector<TarnixFlowStep> steps;
  Timestamp recordedAt;
  std::optional<DeviceInfo> device;

  bool operator==(const TarnixFlow&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"id", &TarnixFlow::id},
                      Field{"name", &TarnixFlow::name},
                      Field{"description", &TarnixFlow::description},
                      Field{"steps", &TarnixFlow::steps},
                      Field{"recordedAt", &TarnixFlow::recordedAt},
                      Field{"device", &TarnixFlow::device}};
  }
};

}  // namespace tarnix
