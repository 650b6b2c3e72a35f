#pragma once

#include <set>
#include <string>
#include <string_view>

#include "probe/platform/class_registry.h"

namespace tarnix::fakes {

class FakeClassRegistry : public platform::ClassRegistry {
 public:
  bool hasClass(std::string_view name) const override { return classes.contains(name); }

  std::set<std::string, std::less<>> classes;
};

}  // namespace tarnix::fakes
