#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>
#include <optional>

#include "platforms/qt6/shared/user_interface_part.h"
#include "platforms/qt6/widgets/buddies.h"
#include "platforms/qt6/widgets/widget_class.h"
#include "platforms/qt6/widgets/widget_parts.h"
#include "probe/platform/view.h"

namespace tarnix::qt6 {

/// A widget as a view. Main thread; answers as an empty view once the widget has gone.
class WidgetView : public platform::View, public std::enable_shared_from_this<WidgetView> {
 public:
  /// `topLeft` is where the widget stands on the screen.
  WidgetView(QWidget& widget, QPointF topLeft, std::shared_ptr<const Surroundings> surroundings,
             std::shared_ptr<const Buddies> buddies, ViewSource& source);

  std::string className() const override { return class_.name; }
  bool isHidden() const override { return widget_ == nullptr || !widget_->isVisible(); }
  double alpha() const override;
  std::vector<std::shared_ptr<View>> subviews() const override;
  std::shared_ptr<View> superview() const override {
    return widget_ == nullptr ? nullptr : superview_;
  }
  platform::ViewKind kind() const override;
  std::optional<std::string> accessibilityIdentifier() const override;
  platform::Rect wholeFrame() const override;
  platform::TouchReactions touchReactions() const override;
  /// The view of a child widget; null when it has none.
  std::shared_ptr<WidgetView> viewOfChild(const QWidget& child) const;
  std::shared_ptr<platform::Responder> responder() const override;
  bool isTextField() const override;
  bool isAccessibilityElement() const override { return description().isElement; }
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
  std::optional<std::size_t> accessibilityElementCount() const override;
  std::shared_ptr<AccessibilityItem> accessibilityElement(std::size_t index) const override;

 private:
  struct Description {
    bool isElement = false;
    QString label;
    platform::AccessibilityTraits traits = platform::accessibility_traits::none;
    std::optional<QString> value;
    QRectF area;
  };

  const Description& description() const;
  Description describe() const;
  const PlainItems& parts() const;
  std::shared_ptr<const Surroundings> surroundingsOfChildren() const;
  std::shared_ptr<const SpokenText> spokenInside() const;

  QPointer<QWidget> widget_;
  const WidgetClass& class_;
  QPointF topLeft_;
  std::shared_ptr<const Surroundings> surroundings_;
  std::shared_ptr<const Buddies> buddies_;
  ViewSource& source_;
  // Null for a window.
  std::shared_ptr<View> superview_;
  // Made when they are first asked for; the widget stays as it is until the loop turns.
  mutable std::optional<Description> description_;
  mutable std::optional<PlainItems> parts_;
};

}  // namespace tarnix::qt6
