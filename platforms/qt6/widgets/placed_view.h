#pragma once

#include <memory>
#include <vector>

#include "platforms/qt6/widgets/placed.h"
#include "probe/platform/view.h"

namespace tarnix::qt6 {

/// A view of a scene, where it shows on the screen.
class PlacedView : public Placed<platform::View> {
 public:
  using Placed<platform::View>::Placed;

  std::string className() const override { return item_->className(); }
  bool isHidden() const override { return item_->isHidden(); }
  double alpha() const override { return item_->alpha(); }
  std::vector<std::shared_ptr<View>> subviews() const override {
    std::vector<std::shared_ptr<View>> result = item_->subviews();
    for (std::shared_ptr<View>& view : result) {
      view = std::make_shared<PlacedView>(std::move(view), placement_);
    }
    return result;
  }
  bool isTextField() const override { return item_->isTextField(); }
  platform::ViewKind kind() const override { return item_->kind(); }
  std::optional<std::string> accessibilityIdentifier() const override {
    return item_->accessibilityIdentifier();
  }
  platform::Rect wholeFrame() const override {
    return frameOf(placement_->mapped(item_->wholeFrame()));
  }
  // Its responder is for a touch to find. The keys go to the view that shows the scene, which
  // passes them on.
  platform::TouchReactions touchReactions() const override { return item_->touchReactions(); }
};

}  // namespace tarnix::qt6
