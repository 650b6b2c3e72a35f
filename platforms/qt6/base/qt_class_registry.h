#pragma once

#include "probe/platform/class_registry.h"

namespace tarnix::qt6 {

/// Classes that a loaded object exports the type information of, and types that the toolkit has a
/// name for.
class QtClassRegistry : public platform::ClassRegistry {
 public:
  static QtClassRegistry& shared();

  bool hasClass(std::string_view name) const override;

 private:
  QtClassRegistry() = default;
};

}  // namespace tarnix::qt6
