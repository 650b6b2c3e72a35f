#pragma once

#include <optional>
#include <tuple>
#include <vector>

#include "probe/link/record.h"
#include "probe/model/transferable_environment.h"
#include "probe/model/uuid.h"

namespace tarnix {

/// The environments that a companion knows, and the one in force.
struct TransferableEnvironmentState {
  std::vector<TransferableEnvironment> environments;
  /// Absent when no environment is active.
  std::optional<Uuid> activeEnvironmentId;

  bool operator==(const TransferableEnvironmentState&) const = default;

  static constexpr auto fields() {
    return std::tuple{
        Field{"environments", &TransferableEnvironmentState::environments},
        Field{"activeEnvironmentId", &TransferableEnvironmentState::activeEnvironmentId}};
  }
};

}  // namespace tarnix
