#pragma once

#include <vector>

#include "probe/overlay/layer.h"

namespace tarnix::overlay {

/// Colours from left to right.
class GradientLayer : public Layer {
 public:
  using Layer::Layer;

  std::vector<platform::HorizontalGradient::Stop> stops;

 protected:
  std::optional<platform::Shape> content(double) const override {
    return platform::HorizontalGradient{bounds(), stops};
  }
};

}  // namespace tarnix::overlay
