#pragma once

#include <cmath>
#include <cstddef>
#include <optional>

#include "probe/overlay/timing_curve.h"

namespace tarnix::overlay {

/// What of a layer can be animated.
enum class Property {
  opacity,
  /// The layer's middle, in the layer around it.
  positionX,
  positionY,
  /// Around the layer's middle.
  scale,
  /// Applied after the scale.
  translationX,
  translationY,
  /// How much of a path is drawn, from its start: 0 to 1.
  strokeEnd,
};
inline constexpr std::size_t propertyCount = 7;

/// The way of one property of one layer over time. Times are seconds.
struct Animation {
  Property property = Property::opacity;
  double from = 0;
  double to = 0;
  double duration = 0;
  /// How long after it was added it begins; until then the layer is where it starts.
  double delay = 0;
  TimingCurve curve = TimingCurve::linear();
  bool repeatsForever = false;
  /// Whether it stays, and holds its end, until it is removed. Else it goes when its time is over,
  /// and the layer is where its own value says.
  bool staysAtEnd = false;
  /// When it was added. Absent until the next frame: what comes between two frames begins with the
  /// later one.
  std::optional<double> addedAt = std::nullopt;

  double valueAt(double now) const {
    const double elapsed = addedAt ? now - *addedAt - delay : 0;
    if (elapsed <= 0 || duration <= 0) {
      return elapsed <= 0 ? from : to;
    }
    const double cycles = elapsed / duration;
    return from +
           (to - from) * curve.progressAt(repeatsForever ? cycles - std::floor(cycles) : cycles);
  }

  bool isOver(double now) const {
    return addedAt && !repeatsForever && now >= *addedAt + delay + duration;
  }
};

}  // namespace tarnix::overlay
