#pragma once

#include <optional>
#include <string>
#include <tuple>

#include "probe/link/record.h"

namespace tarnix {

/// What "command.showOverlay" carries.
struct OverlayCommand {
  /// "scan", "capture", "data", "verify" or "environment"; of any other the detail alone is shown.
  std::string category;
  std::optional<std::string> detail;
  /// Of "verify" alone; absent: it passed.
  std::optional<bool> passed;

  bool operator==(const OverlayCommand&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"category", &OverlayCommand::category},
                      Field{"detail", &OverlayCommand::detail},
                      Field{"passed", &OverlayCommand::passed}};
  }
};

}  // namespace tarnix
