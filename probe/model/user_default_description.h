#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "probe/platform/property_value.h"

namespace tarnix {

/// One value of the host's settings, for people.
struct UserDefaultDescription {
  /// Characters of a long value that are shown, three full stops after them.
  static constexpr std::size_t maximumCharacters = 200;

  /// One of String, Bool, Int, Double, Data, Date, Array, Dict and ?.
  std::string_view valueType;
  std::string displayValue;
};

UserDefaultDescription describeUserDefault(const platform::PropertyValue& value);

}  // namespace tarnix
