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
  struct Member;
  struct Dictionary {
    std::vector<Member> members;
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

/// A class of its own and not a pair, whose own requirements would go round in a circle.
struct PropertyValue::Member {
  Member(std::string memberName, PropertyValue memberValue)
      : name(std::move(memberName)), value(std::move(memberValue)) {}

  std::string name;
  PropertyValue value;
};

}  // namespace tarnix::platform
