#pragma once

#include <utility>
#include <vector>

#include "probe/overlay/layer.h"

namespace tarnix::overlay {

/// Strokes along straight lines with round ends, without a fill. Its own coordinates are those of
/// the layer around it.
class ShapeLayer : public Layer {
 public:
  using Lines = std::vector<std::vector<platform::Point>>;

  explicit ShapeLayer(Lines lines) : Layer({}), lines_(std::move(lines)) {}

  platform::Color strokeColor;
  double lineWidth = 1;

 protected:
  std::optional<platform::Shape> content(double now) const override;

 private:
  Lines lines_;
};

}  // namespace tarnix::overlay
