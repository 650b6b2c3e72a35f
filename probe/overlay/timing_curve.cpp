#include "probe/overlay/timing_curve.h"

#include <algorithm>
#include <cmath>

namespace tarnix::overlay {

namespace {

/// The height at `x` of the Bézier curve from (0, 0) to (1, 1) whose two control points lie at the
/// heights 0 and 1.
double easing(double x, double firstControl, double secondControl) {
  const auto coordinate = [](double at, double first, double second) {
    const double rest = 1 - at;
    return 3 * rest * rest * at * first + 3 * rest * at * at * second + at * at * at;
  };
  // The curve only rises, so that halving finds the place; this often, to the last bit.
  double low = 0;
  double high = 1;
  for (int halvings = 0; halvings < 52; ++halvings) {
    const double middle = (low + high) / 2;
    (coordinate(middle, firstControl, secondControl) < x ? low : high) = middle;
  }
  return coordinate((low + high) / 2, 0, 1);
}

// A spring counts as at rest when its swing is below this part of the way.
constexpr double restingSwing = 0.001;

/// `time` is the fraction of the animation; the spring is as stiff as it takes to rest at 1.
double springAt(double time, double dampingRatio) {
  if (dampingRatio >= 1) {
    // (1 + s) * exp(-s) falls below `restingSwing` here.
    constexpr double stiffness = 9.2334;
    return 1 - (1 + stiffness * time) * std::exp(-stiffness * time);
  }
  const double swinging = std::sqrt(1 - dampingRatio * dampingRatio);
  const double decay = -std::log(restingSwing * swinging);
  const double frequency = decay / dampingRatio * swinging;
  return 1 - std::exp(-decay * time) * (std::cos(frequency * time) +
                                        dampingRatio / swinging * std::sin(frequency * time));
}

}  // namespace

double TimingCurve::progressAt(double fraction) const {
  if (fraction <= 0) {
    return 0;
  }
  if (fraction >= 1) {
    return 1;
  }
  switch (kind_) {
    case Kind::linear:
      return fraction;
    case Kind::easeInOut:
      return easing(fraction, 0.42, 0.58);
    case Kind::easeOut:
      return easing(fraction, 0, 0.58);
    case Kind::spring:
      return springAt(fraction, dampingRatio_);
  }
  return 1;
}

}  // namespace tarnix::overlay
