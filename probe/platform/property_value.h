#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace tarnix::platform {

/// One value of a settings store: the nine kinds that such stores hold.
struct PropertyValue {
  struct Data {
    std::string bytes;
  };
  struct Array {
    std::vector<PropertyValue> elements;
  };
  struct Dictionary {
    std::vector<std::pair<std::string, PropertyValue>> members;
  };
  /// A value of a kind that has no name here; `description` is its generic text.
  struct Other {
    std::string description;
  };
  using Date = std::chrono::system_clock::time_point;

  std::variant<std::string, bool, std::int64_t, std::uint64_t, double, Data, Date, Array,
               Dictionary, Other>
      value;
};

}  // namespace tarnix::platform
