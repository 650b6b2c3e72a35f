#pragma once

#include <QPointer>
#include <QQuickWindow>
#include <memory>

#include "platforms/qt6/shared/surroundings.h"
#include "probe/platform/view.h"

namespace tarnix::qt6 {

/// A Quick window, or the scene inside a widget, as a view. Main thread.
class SceneWindowView : public platform::View {
 public:
  SceneWindowView(QQuickWindow& window, const Surroundings& surroundings);

  std::string className() const override;
  bool isHidden() const override;
  double alpha() const override { return window_ == nullptr ? 0 : window_->opacity(); }
  std::vector<std::shared_ptr<View>> subviews() const override;
  std::optional<std::string> accessibilityIdentifier() const override;
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
  QPointer<QQuickWindow> window_;
  std::shared_ptr<const Surroundings> surroundings_;
};

}  // namespace tarnix::qt6
