#include "probe/overlay/timing_curve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace tarnix::tests {
namespace {

using overlay::TimingCurve;

const std::vector<TimingCurve> allCurves = {TimingCurve::linear(),    TimingCurve::easeInOut(),
                                            TimingCurve::easeOut(),   TimingCurve::spring(0.5),
                                            TimingCurve::spring(0.8), TimingCurve::spring(1)};

TEST(TimingCurve, BeginsAtTheStartAndEndsAtTheEnd) {
  for (const TimingCurve& curve : allCurves) {
    EXPECT_EQ(curve.progressAt(0), 0);
    EXPECT_EQ(curve.progressAt(1), 1);
    EXPECT_EQ(curve.progressAt(-1), 0);
    EXPECT_EQ(curve.progressAt(2), 1);
    EXPECT_NEAR(curve.progressAt(0.0001), 0, 0.001);
    EXPECT_NEAR(curve.progressAt(0.9999), 1, 0.002);
  }
}

TEST(TimingCurve, EasesWithoutTurningBack) {
  for (const TimingCurve& curve : {TimingCurve::easeInOut(), TimingCurve::easeOut()}) {
    double before = 0;
    for (int step = 1; step <= 100; ++step) {
      const double progress = curve.progressAt(step / 100.0);
      EXPECT_GT(progress, before);
      before = progress;
    }
  }
}

TEST(TimingCurve, EasesInAndOutAlike) {
  const TimingCurve curve = TimingCurve::easeInOut();
  EXPECT_NEAR(curve.progressAt(0.5), 0.5, 1e-9);
  EXPECT_NEAR(curve.progressAt(0.25), 0.129162, 1e-5);
  EXPECT_NEAR(curve.progressAt(0.75), 0.870838, 1e-5);
}

TEST(TimingCurve, EasesOutFromFullSpeed) {
  const TimingCurve curve = TimingCurve::easeOut();
  EXPECT_NEAR(curve.progressAt(0.5), 0.684635, 1e-5);
  // The first control point lies on the horizontal axis at its origin.
  EXPECT_GT(curve.progressAt(0.1), 0.1);
}

TEST(TimingCurve, ALooseSpringOvershootsAndComesBack) {
  const TimingCurve curve = TimingCurve::spring(0.5);
  double highest = 0;
  for (int step = 0; step <= 1000; ++step) {
    highest = std::max(highest, curve.progressAt(step / 1000.0));
  }
  // What the damping ratio alone decides: exp(-pi * ratio / sqrt(1 - ratio^2)).
  EXPECT_NEAR(highest, 1 + std::exp(-M_PI * 0.5 / std::sqrt(0.75)), 1e-4);
}

TEST(TimingCurve, ASpringIsAtRestWhenItsTimeIsOver) {
  for (const double ratio : {0.5, 0.6, 0.8, 1.0, 1.5}) {
    for (const double fraction : {0.995, 0.999, 0.99999}) {
      EXPECT_NEAR(TimingCurve::spring(ratio).progressAt(fraction), 1, 0.0015) << ratio;
    }
  }
}

TEST(TimingCurve, AFullyDampedSpringNeverOvershoots) {
  const TimingCurve curve = TimingCurve::spring(1);
  double before = 0;
  for (int step = 1; step <= 100; ++step) {
    const double progress = curve.progressAt(step / 100.0);
    EXPECT_GE(progress, before);
    EXPECT_LE(progress, 1);
    before = progress;
  }
}

}  // namespace
}  // namespace tarnix::tests
