#pragma once

#include <optional>
#include <string>
#include <tuple>

#include "probe/link/companion_message.h"
#include "probe/link/record.h"

namespace tarnix {

struct OverlayCommand {
  std::string category;
  std::optional<std::string> detail;
  std::optional<bool> passed;

  static constexpr auto fields() {
    return std::tuple{Field{"category", &OverlayCommand::category},
                      Field{"detail", &OverlayCommand::detail},
                      Field{"passed", &OverlayCommand::passed}};
  }

  bool operator==(const OverlayCommand&) const = default;
};

/// What the companion has shown on the device. None has an answer. Main thread.
namespace ProbeCommandHandler {

void handleShowOverlay(const CompanionMessage& message);
void handleHideOverlay();

}  // namespace ProbeCommandHandler
}  // namespace tarnix
