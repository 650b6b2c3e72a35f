#pragma once

namespace tarnix::overlay {

/// How an animation gets from its start to its end.
class TimingCurve {
 public:
  static TimingCurve linear() { return TimingCurve(Kind::linear, 0); }
  /// Slow at both ends; what animations of views have unless they say otherwise.
  static TimingCurve easeInOut() { return TimingCurve(Kind::easeInOut, 0); }
  static TimingCurve easeOut() { return TimingCurve(Kind::easeOut, 0); }
  /// A weight on a spring that starts at rest and has come to rest at the end. `dampingRatio` is
  /// above 0; below 1 it overshoots and swings, from 1 on it does not.
  static TimingCurve spring(double dampingRatio) { return TimingCurve(Kind::spring, dampingRatio); }

  /// How much of the way is done when `fraction` of the time has passed, both from 0 to 1; a spring
  /// goes beyond. Exactly 0 at the start and 1 at the end.
  double progressAt(double fraction) const;

 private:
  enum class Kind { linear, easeInOut, easeOut, spring };

  TimingCurve(Kind kind, double dampingRatio) : kind_(kind), dampingRatio_(dampingRatio) {}

  Kind kind_;
  double dampingRatio_;
};

}  // namespace tarnix::overlay
