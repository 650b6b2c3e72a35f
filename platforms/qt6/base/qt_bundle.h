#pragma once

#include "probe/platform/bundle.h"

namespace tarnix::qt6 {

/// What the application object says of the host; before there is one, what the executable's name
/// says.
class QtBundle : public platform::Bundle {
 public:
  static QtBundle& shared();

  std::optional<std::string> bundleIdentifier() const override;
  std::optional<std::string> infoValue(std::string_view key) const override;

 private:
  QtBundle() = default;
};

}  // namespace tarnix::qt6
