#pragma once

#include <QPointer>
#include <QQuickItem>
#include <memory>
#include <optional>

#include "platforms/qt6/quick/item_description.h"
#include "platforms/qt6/quick/scene_covers.h"
#include "probe/platform/view.h"

namespace tarnix::qt6 {

/// A Quick item as a view. Main thread; answers as an empty view once the item has gone.
class SceneItemView : public platform::View {
 public:
  SceneItemView(QQuickItem& item, std::shared_ptr<const ItemClass> parent,
                std::shared_ptr<const Surroundings> surroundings,
                std::shared_ptr<const SceneCovers> covers);

  std::string className() const override { return class_->name; }
  bool isHidden() const override { return item_ == nullptr || !item_->isVisible(); }
  double alpha() const override { return item_ == nullptr ? 0 : item_->opacity(); }
  std::vector<std::shared_ptr<View>> subviews() const override;
  bool isTextField() const override { return description().isTextField; }
  bool isAccessibilityElement() const override;
  std::string accessibilityLabel() const override { return description().label.toStdString(); }
  platform::Rect accessibilityFrame() const override;
  platform::AccessibilityTraits accessibilityTraits() const override {
    return description().traits;
  }
  std::optional<std::string> accessibilityValue() const override;
  std::optional<std::vector<std::shared_ptr<AccessibilityItem>>> accessibilityElements()
      const override {
    return std::nullopt;
  }
  std::optional<std::size_t> accessibilityElementCount() const override { return std::nullopt; }
  std::shared_ptr<AccessibilityItem> accessibilityElement(std::size_t) const override {
    return nullptr;
  }

 private:
  const ItemDescription& description() const;
  /// The whole of it, on the screen.
  QRectF area() const;
  /// What can be seen of it, on the screen.
  QRectF seenArea() const;
  std::shared_ptr<const Surroundings> surroundingsOfChildren() const;

  QPointer<QQuickItem> item_;
  std::shared_ptr<const ItemClass> class_;
  std::shared_ptr<const ItemClass> parent_;
  std::shared_ptr<const Surroundings> surroundings_;
  std::shared_ptr<const SceneCovers> covers_;
  // Made when it is first asked for; the item stays as it is until the loop turns.
  mutable std::optional<ItemDescription> description_;
};

}  // namespace tarnix::qt6
