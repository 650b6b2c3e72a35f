#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "probe/platform/accessibility_item.h"

namespace tarnix::fakes {

/// Answers what its members hold, for any interface that is an accessibility item.
template <class Interface>
class FakeItemOf : public Interface {
 public:
  using Children = std::vector<std::shared_ptr<platform::AccessibilityItem>>;

  bool isAccessibilityElement() const override { return isElement; }
  std::string accessibilityLabel() const override { return label; }
  bool hasAccessibilityLabel() const override { return hasEmptyLabel || !label.empty(); }
  platform::Rect accessibilityFrame() const override { return frame; }
  platform::AccessibilityTraits accessibilityTraits() const override { return traits; }
  std::optional<std::string> accessibilityValue() const override { return value; }
  std::optional<Children> accessibilityElements() const override { return declaredChildren; }
  std::optional<std::size_t> accessibilityElementCount() const override {
    return countedChildren ? std::optional(countedChildren->size()) : std::nullopt;
  }
  std::shared_ptr<platform::AccessibilityItem> accessibilityElement(
      std::size_t index) const override {
    return (*countedChildren)[index];
  }

  bool isElement = false;
  std::string label;
  /// Whether it has a label while `label` is empty.
  bool hasEmptyLabel = false;
  platform::Rect frame;
  platform::AccessibilityTraits traits = platform::accessibility_traits::none;
  std::optional<std::string> value;
  std::optional<Children> declaredChildren;
  std::optional<Children> countedChildren;
};

using FakeAccessibilityItem = FakeItemOf<platform::AccessibilityItem>;

}  // namespace tarnix::fakes
