#pragma once

#include <string>
#include <utility>
#include <vector>

#include "probe/platform/property_value.h"

namespace tarnix::platform {

/// The host application's default settings store, read only. Main thread.
class UserDefaults {
 public:
  virtual ~UserDefaults() = default;

  /// All keys with their values, in no particular order, all layers of the store merged; groups
  /// are part of the key, as in "window/width".
  virtual std::vector<std::pair<std::string, PropertyValue>> dictionaryRepresentation() const = 0;
};

}  // namespace tarnix::platform
