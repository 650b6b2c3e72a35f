#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "probe/platform/accessibility_traits.h"
#include "probe/platform/geometry.h"

namespace tarnix::platform {

class View;

/// What one thing on the screen says to assistive technology: a view, or a part of one that is no
/// view (a row, a cell, a menu entry). Main thread. Valid until the main thread returns to its
/// loop; a thing that has gone in the meantime answers as an empty one.
class AccessibilityItem {
 public:
  virtual ~AccessibilityItem() = default;

  virtual bool isAccessibilityElement() const = 0;
  /// In UTF-8; empty when it has none.
  virtual std::string accessibilityLabel() const = 0;
  /// Whether it has a label at all, be it an empty one. Toolkits that do not tell the two apart
  /// leave it as it is.
  virtual bool hasAccessibilityLabel() const { return !accessibilityLabel().empty(); }
  /// In screen coordinates (see `Window`). All four numbers are finite.
  virtual Rect accessibilityFrame() const = 0;
  virtual AccessibilityTraits accessibilityTraits() const = 0;
  /// In UTF-8.
  virtual std::optional<std::string> accessibilityValue() const = 0;

  /// The children that the item declares instead of being walked; absent for most.
  virtual std::optional<std::vector<std::shared_ptr<AccessibilityItem>>> accessibilityElements()
      const = 0;
  /// How many children are reached by index; absent when the item has no such children.
  virtual std::optional<std::size_t> accessibilityElementCount() const = 0;
  /// May be null. `index` is below the count.
  virtual std::shared_ptr<AccessibilityItem> accessibilityElement(std::size_t index) const = 0;

  /// The item as a view; null when it is none.
  virtual const View* asView() const { return nullptr; }
};

}  // namespace tarnix::platform
