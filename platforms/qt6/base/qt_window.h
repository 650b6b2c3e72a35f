#pragma once

#include <QPointer>
#include <QWindow>
#include <functional>
#include <memory>
#include <vector>

#include "probe/platform/window.h"

namespace tarnix::qt6 {

/// A window as its part shows it, with the popups in front.
class QtWindow : public platform::Window {
 public:
  /// What a touch at a point of the screen reaches in the window and the popups in front of it.
  using Touched = std::function<std::shared_ptr<platform::View>(platform::Point)>;

  QtWindow(QWindow& window, std::shared_ptr<platform::View> content,
           std::vector<std::shared_ptr<platform::View>> popups, bool isKeyWindow, Touched touched);

  bool isKeyWindow() const override { return isKeyWindow_; }
  std::shared_ptr<platform::View> hitTest(platform::Point point) const override {
    return touched_(point);
  }
  std::shared_ptr<platform::Responder> responder() const override { return content_->responder(); }
  std::vector<std::shared_ptr<platform::View>> subviews() const override;
  std::optional<platform::Picture> lastPicture() const override;

  std::string className() const override { return content_->className(); }
  platform::ViewKind kind() const override { return content_->kind(); }
  std::optional<std::string> accessibilityIdentifier() const override {
    return content_->accessibilityIdentifier();
  }
  platform::Rect wholeFrame() const override { return content_->wholeFrame(); }
  platform::TouchReactions touchReactions() const override { return content_->touchReactions(); }
  bool isHidden() const override { return content_->isHidden(); }
  double alpha() const override { return content_->alpha(); }
  bool isTextField() const override { return content_->isTextField(); }
  bool isAccessibilityElement() const override { return content_->isAccessibilityElement(); }
  std::string accessibilityLabel() const override { return content_->accessibilityLabel(); }
  platform::Rect accessibilityFrame() const override { return content_->accessibilityFrame(); }
  platform::AccessibilityTraits accessibilityTraits() const override {
    return content_->accessibilityTraits();
  }
  std::optional<std::string> accessibilityValue() const override {
    return content_->accessibilityValue();
  }
  std::optional<std::vector<std::shared_ptr<AccessibilityItem>>> accessibilityElements()
      const override {
    return content_->accessibilityElements();
  }
  std::optional<std::size_t> accessibilityElementCount() const override {
    return content_->accessibilityElementCount();
  }
  std::shared_ptr<AccessibilityItem> accessibilityElement(std::size_t index) const override {
    return content_->accessibilityElement(index);
  }

 private:
  QPointer<QWindow> window_;
  std::shared_ptr<platform::View> content_;
  std::vector<std::shared_ptr<platform::View>> popups_;
  bool isKeyWindow_;
  Touched touched_;
};

}  // namespace tarnix::qt6
