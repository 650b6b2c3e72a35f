#pragma once

#include "probe/overlay/layer.h"

namespace tarnix::overlay {

/// Blurs what is behind it, and lays a colour over that.
class BlurLayer : public Layer {
 public:
  using Layer::Layer;

  double radius = 0;
  platform::Color tint;

 protected:
  std::optional<platform::Shape> content(double) const override {
    return platform::Backdrop{bounds(), radius, tint};
  }
};

}  // namespace tarnix::overlay
