#pragma once

#include <string>
#include <utility>
#include <vector>

#include "probe/platform/user_defaults.h"

namespace tarnix::fakes {

class FakeUserDefaults : public platform::UserDefaults {
 public:
  std::vector<std::pair<std::string, platform::PropertyValue>> dictionaryRepresentation()
      const override {
    return values;
  }

  std::vector<std::pair<std::string, platform::PropertyValue>> values;
};

}  // namespace tarnix::fakes
