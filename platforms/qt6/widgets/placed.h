#pragma once

#include <QTransform>
#include <memory>
#include <utility>

#include "platforms/qt6/shared/frame.h"
#include "platforms/qt6/shared/surroundings.h"
#include "probe/platform/accessibility_item.h"

namespace tarnix::qt6 {

/// How what a scene holds shows on the screen.
struct Placement {
  QTransform toScreen;
  /// What the view that shows the scene has around it.
  Surroundings outside;

  QRectF mapped(const platform::Rect& frame) const { return toScreen.mapRect(rectOf(frame)); }
  QRectF shown(const platform::Rect& frame) const { return outside.visiblePart(mapped(frame)); }
};

/// An element of a scene, where it shows on the screen. `Item` is what it stands for, a view or a
/// part of one. Main thread.
template <typename Item>
class Placed : public Item {
 public:
  Placed(std::shared_ptr<Item> item, std::shared_ptr<const Placement> placement)
      : item_(std::move(item)), placement_(std::move(placement)) {}

  bool isAccessibilityElement() const override {
    return item_->isAccessibilityElement() &&
           !placement_->shown(item_->accessibilityFrame()).isEmpty();
  }
  std::string accessibilityLabel() const override { return item_->accessibilityLabel(); }
  bool hasAccessibilityLabel() const override { return item_->hasAccessibilityLabel(); }
  platform::Rect accessibilityFrame() const override {
    return frameOf(placement_->shown(item_->accessibilityFrame()));
  }
  platform::AccessibilityTraits accessibilityTraits() const override {
    return item_->accessibilityTraits();
  }
  std::optional<std::string> accessibilityValue() const override {
    return item_->accessibilityValue();
  }
  std::optional<std::vector<std::shared_ptr<platform::AccessibilityItem>>> accessibilityElements()
      const override {
    return std::nullopt;
  }
  std::optional<std::size_t> accessibilityElementCount() const override {
    return item_->accessibilityElementCount();
  }
  std::shared_ptr<platform::AccessibilityItem> accessibilityElement(
      std::size_t index) const override {
    std::shared_ptr<platform::AccessibilityItem> element = item_->accessibilityElement(index);
    return element == nullptr ? nullptr
                              : std::make_shared<Placed<platform::AccessibilityItem>>(
                                    std::move(element), placement_);
  }

 protected:
  std::shared_ptr<Item> item_;
  std::shared_ptr<const Placement> placement_;
};

}  // namespace tarnix::qt6
