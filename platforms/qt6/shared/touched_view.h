#pragma once

#include <memory>
#include <utility>

#include "probe/platform/view.h"

namespace tarnix::qt6 {

/// A view that a touch has reached, on its way to the window: what it is comes from `view`, what it
/// does from `responder`, which knows the touch. Main thread.
class TouchedView : public platform::View {
 public:
  TouchedView(std::shared_ptr<platform::View> view, std::shared_ptr<platform::View> outer,
              std::shared_ptr<platform::Responder> responder)
      : view_(std::move(view)), outer_(std::move(outer)), responder_(std::move(responder)) {}

  std::shared_ptr<View> superview() const override { return outer_; }
  std::shared_ptr<platform::Responder> responder() const override { return responder_; }

  std::string className() const override { return view_->className(); }
  bool isHidden() const override { return view_->isHidden(); }
  double alpha() const override { return view_->alpha(); }
  std::vector<std::shared_ptr<View>> subviews() const override { return view_->subviews(); }
  bool isTextField() const override { return view_->isTextField(); }
  platform::ViewKind kind() const override { return view_->kind(); }
  std::optional<std::string> accessibilityIdentifier() const override {
    return view_->accessibilityIdentifier();
  }
  platform::Rect wholeFrame() const override { return view_->wholeFrame(); }
  platform::TouchReactions touchReactions() const override { return view_->touchReactions(); }
  bool hasAccessibilityLabel() const override { return view_->hasAccessibilityLabel(); }
  bool isAccessibilityElement() const override { return view_->isAccessibilityElement(); }
  std::string accessibilityLabel() const override { return view_->accessibilityLabel(); }
  platform::Rect accessibilityFrame() const override { return view_->accessibilityFrame(); }
  platform::AccessibilityTraits accessibilityTraits() const override {
    return view_->accessibilityTraits();
  }
  std::optional<std::string> accessibilityValue() const override {
    return view_->accessibilityValue();
  }
  std::optional<std::vector<std::shared_ptr<AccessibilityItem>>> accessibilityElements()
      const override {
    return view_->accessibilityElements();
  }
  std::optional<std::size_t> accessibilityElementCount() const override {
    return view_->accessibilityElementCount();
  }
  std::shared_ptr<AccessibilityItem> accessibilityElement(std::size_t index) const override {
    return view_->accessibilityElement(index);
  }

 private:
  std::shared_ptr<platform::View> view_;
  std::shared_ptr<platform::View> outer_;
  std::shared_ptr<platform::Responder> responder_;
};

}  // namespace tarnix::qt6
