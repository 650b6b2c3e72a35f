#pragma once

#include <QPointer>
#include <QQuickItem>
#include <span>
#include <vector>

#include "platforms/qt6/quick/item_description.h"
#include "platforms/qt6/quick/item_keys.h"
#include "probe/platform/view.h"

namespace tarnix::qt6 {

class Scene;

/// A Quick item as a view, as the item was when the scene was read. Owned by its scene. Main
/// thread; answers as an empty view once the item has gone.
class SceneItemView : public platform::View {
 public:
  /// What the items around make of this one. All are the scene's.
  struct Place {
    /// Null for the outermost item.
    const ItemClass* parent;
    const Surroundings* surroundings;
    /// Null when no element is around.
    const SpokenText* spoken;
  };

  SceneItemView(Scene& scene, QQuickItem& item, const ItemClass& itemClass, const Place& place,
                int depth);

  std::string className() const override { return class_.name; }
  bool isHidden() const override { return !isVisible_; }
  double alpha() const override { return opacity_; }
  std::vector<std::shared_ptr<View>> subviews() const override;
  std::shared_ptr<View> superview() const override;
  platform::ViewKind kind() const override;
  std::optional<std::string> accessibilityIdentifier() const override;
  platform::Rect wholeFrame() const override;
  platform::TouchReactions touchReactions() const override;
  bool isFirstResponder() const override { return item_ != nullptr && hasKeyFocus(*item_); }
  std::shared_ptr<platform::Responder> responder() const override;
  bool isTextField() const override { return description_.isTextField && item_ != nullptr; }
  bool isAccessibilityElement() const override {
    return description_.isElement && item_ != nullptr && !elementArea().isEmpty();
  }
  std::string accessibilityLabel() const override {
    return description_.label.isEmpty() || item_ == nullptr ? std::string()
                                                            : description_.label.toStdString();
  }
  platform::Rect accessibilityFrame() const override;
  platform::AccessibilityTraits accessibilityTraits() const override { return description_.traits; }
  std::optional<std::string> accessibilityValue() const override;
  std::optional<std::vector<std::shared_ptr<AccessibilityItem>>> accessibilityElements()
      const override {
    return std::nullopt;
  }
  std::optional<std::size_t> accessibilityElementCount() const override { return std::nullopt; }
  std::shared_ptr<AccessibilityItem> accessibilityElement(std::size_t) const override {
    return nullptr;
  }

  /// For the scene.
  QQuickItem* item() const { return item_; }
  const ItemClass& itemClass() const { return class_; }
  const Place& place() const { return place_; }
  const ItemDescription& description() const { return description_; }
  /// The whole of it, on the screen.
  QRectF area() const;
  int paintOrder() const { return paintOrder_; }
  void setPaintOrder(int order) { paintOrder_ = order; }
  bool isExpanded() const { return isExpanded_; }
  /// Each of them gets this as its parent. The scene keeps the list.
  void setChildren(std::span<SceneItemView* const> children);

 private:
  /// What can be seen of it, on the screen, and where it can be pointed at.
  const QRectF& elementArea() const;
  QRectF findElementArea() const;

  Scene& scene_;
  QPointer<QQuickItem> item_;
  const ItemClass& class_;
  Place place_;
  ItemDescription description_;
  std::span<SceneItemView* const> children_;
  // Null for the outermost item.
  SceneItemView* parent_ = nullptr;
  // Found when it is first asked for: what hides the item is known once the scene is complete.
  mutable std::optional<QRectF> elementArea_;
  QString objectName_;
  double opacity_;
  int depth_;
  int paintOrder_ = 0;
  bool isVisible_;
  bool isExpanded_ = false;
};

}  // namespace tarnix::qt6
