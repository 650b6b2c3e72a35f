#pragma once

#include <QPointF>
#include <QPointer>
#include <QWindow>

#include "probe/platform/view.h"

namespace tarnix::qt6 {

/// A window that its application paints by itself: nothing in it is known.
class ContentlessView : public platform::View {
 public:
  ContentlessView(QWindow& window, QPointF origin) : window_(&window), origin_(origin) {}
  /// Touched at `touch`, in the window's own coordinates.
  ContentlessView(QWindow& window, QPointF origin, QPointF touch)
      : window_(&window), origin_(origin), touch_(touch) {}

  std::string className() const override;
  bool isHidden() const override { return window_ == nullptr || !window_->isVisible(); }
  double alpha() const override { return window_ == nullptr ? 0 : window_->opacity(); }
  std::vector<std::shared_ptr<View>> subviews() const override { return {}; }
  std::shared_ptr<platform::Responder> responder() const override;
  bool isTextField() const override { return false; }
  bool isAccessibilityElement() const override { return false; }
  std::string accessibilityLabel() const override { return {}; }
  platform::Rect accessibilityFrame() const override;
  platform::AccessibilityTraits accessibilityTraits() const override {
    return platform::accessibility_traits::none;
  }
  std::optional<std::string> accessibilityValue() const override { return std::nullopt; }
  std::optional<std::vector<std::shared_ptr<AccessibilityItem>>> accessibilityElements()
      const override {
    return std::nullopt;
  }
  std::optional<std::size_t> accessibilityElementCount() const override { return std::nullopt; }
  std::shared_ptr<AccessibilityItem> accessibilityElement(std::size_t) const override {
    return nullptr;
  }

 private:
  QPointer<QWindow> window_;
  QPointF origin_;
  std::optional<QPointF> touch_;
};

}  // namespace tarnix::qt6
