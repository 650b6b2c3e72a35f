#pragma once

#include <string_view>

namespace tarnix::platform {

/// The classes that are part of the running process. Any thread.
class ClassRegistry {
 public:
  virtual ~ClassRegistry() = default;

  /// Whether there is a class of that qualified name, its parts joined by dots as in "Shop.Cart".
  virtual bool hasClass(std::string_view name) const = 0;
};

}  // namespace tarnix::platform
