#pragma once

#include <optional>
#include <string>
#include <vector>

#include "probe/platform/geometry.h"

namespace tarnix::contract {

/// Something that a test puts into a window, in whatever way the world at hand does it.
struct Thing {
  /// A scroller has a content of `scrolledSize`.
  enum class Kind { button, label, field, scroller };
  static constexpr platform::Size scrolledSize{1000, 800};

  Kind kind = Kind::button;
  std::string label{};
  platform::Rect frame{};
  bool isHidden = false;
  bool isDisabled = false;
  double opacity = 1;
  /// What stands in a field.
  std::optional<std::string> value{};
  /// What the fakes call it; toolkits have names of their own.
  std::string className = "View";
};

/// One window with things in it, the later ones in front.
struct ScreenDescription {
  platform::Size size{400, 300};
  std::vector<Thing> things{};
};

}  // namespace tarnix::contract
