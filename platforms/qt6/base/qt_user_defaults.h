#pragma once

#include "probe/platform/user_defaults.h"

namespace tarnix::qt6 {

/// The settings that a plain settings object of the application reads: the user's, then the
/// organisation's, then the system's.
class QtUserDefaults : public platform::UserDefaults {
 public:
  static QtUserDefaults& shared();

  std::vector<std::pair<std::string, platform::PropertyValue>> dictionaryRepresentation()
      const override;

 private:
  QtUserDefaults() = default;
};

}  // namespace tarnix::qt6
