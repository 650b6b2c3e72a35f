#include <cmath>
#include <functional>
#include <map>
#include <vector>

#include "tests/unit/overlay_world.h"

/// The way of everything that moves: where it is when it starts, halfway, and in the end.
namespace tarnix::tests {
namespace {

using overlay::Layer;
using overlay::Property;

/// Of one property of one layer, in seconds since the effect began.
struct Course {
  /// In the order in which the effect adds its layers.
  std::size_t layer;
  Property property;
  double begin;
  double end;
  double from;
  double halfway;
  double to;
};

// What has come to its end is taken away at that moment: looked at just before.
constexpr double moment = 1e-7;
// What that moment makes of a value.
constexpr double tolerance = 1e-4;
// What is left of the swing of a spring when its time is over, as a part of its way.
constexpr double restingSwing = 0.001;

// Halfway through its time. Curves of the springs by the dampings that effects have, from a weight
// on a spring that was followed in small steps.
constexpr double sprung05 = 0.9740083;
constexpr double sprung06 = 1.0200202;
constexpr double sprung08 = 1.0114342;
constexpr double easedOut = 0.684635;

double between(double from, double to, double part) { return from + (to - from) * part; }

class CourseTest : public OverlayTest {
 protected:
  using Layers = std::vector<std::shared_ptr<Layer>>;

  void expectCourses(const Layers& layers, const std::vector<Course>& courses) {
    // Time only goes on: what is to be seen of all courses, in the order of its times.
    std::multimap<double, std::function<void()>> looks;
    const auto lookAt = [&](const Course& course, double time, double value) {
      looks.emplace(time, [&layers, course, time, value] {
        EXPECT_NEAR(seen(*layers.at(course.layer), course.property), value,
                    tolerance + restingSwing * std::abs(course.to - course.from))
            << "layer " << course.layer << ", property " << static_cast<int>(course.property)
            << ", " << time << " s";
      });
    };
    for (const Course& course : courses) {
      lookAt(course, course.begin, course.from);
      lookAt(course, (course.begin + course.end) / 2, course.halfway);
      lookAt(course, course.end - moment, course.to);
    }
    for (const auto& [time, look] : looks) {
      frameAt(time);
      look();
    }
  }

  void expectCourses(const std::vector<Course>& courses) { expectCourses(effectLayers(), courses); }

  void expectGoneAt(double time) {
    EXPECT_FALSE(effectLayers().empty());
    frameAt(time + moment);
    EXPECT_TRUE(effectLayers().empty());
    framesFrom(time + moment, time + 5);
    expectRest();
  }
};

TEST_F(CourseTest, TapRing) {
  ProbeTouchOverlay::showTap({100, 200});
  expectCourses({
      {0, Property::scale, 0, 0.25, 0.3, between(0.3, 1, sprung06), 1},
      {0, Property::opacity, 0, 0.25, 1, 1, 1},
      {0, Property::scale, 0.25, 0.35, 1, 1, 1},
      {0, Property::opacity, 0.25, 0.35, 1, 1, 1},
      {0, Property::scale, 0.35, 0.65, 1, 1.25, 1.5},
      {0, Property::opacity, 0.35, 0.65, 1, 0.5, 0},
  });
  expectGoneAt(0.65);
}

TEST_F(CourseTest, SwipeTrail) {
  ProbeTouchOverlay::showSwipe({10, 20}, {110, 20});
  std::vector<Course> courses = {
      {0, Property::strokeEnd, 0, 0.35, 0, 0.5, 1},
      // The arrowhead is there from the start.
      {3, Property::strokeEnd, 0, 0.35, 1, 1, 1},
  };
  // The strokes fade evenly, the dots as views do: halfway there is no difference.
  for (const std::size_t layer : {0U, 1U, 2U, 3U}) {
    courses.push_back({layer, Property::opacity, 0, 0.35, 1, 1, 1});
    courses.push_back({layer, Property::opacity, 0.35, 0.5, 1, 1, 1});
    courses.push_back({layer, Property::opacity, 0.5, 0.8, 1, 0.5, 0});
  }
  expectCourses(courses);
  expectGoneAt(0.8);
}

TEST_F(CourseTest, StrokesFadeEvenlyAndDotsAsViewsDo) {
  ProbeTouchOverlay::showSwipe({10, 20}, {110, 20});
  const Layers layers = effectLayers();
  frameAt(0);
  frameAt(0.35);
  frameAt(0.5 + 0.3 / 4);
  EXPECT_NEAR(seen(*layers.at(0), Property::opacity), 0.75, tolerance);
  EXPECT_NEAR(seen(*layers.at(3), Property::opacity), 0.75, tolerance);
  EXPECT_NEAR(seen(*layers.at(1), Property::opacity), 1 - 0.129162, tolerance);
  EXPECT_NEAR(seen(*layers.at(2), Property::opacity), 1 - 0.129162, tolerance);
}

TEST_F(CourseTest, TypingBadge) {
  ProbeTouchOverlay::showTypeText(platform::Point{100, 200});
  expectCourses({
      {0, Property::opacity, 0, 0.15, 0, 0.5, 1},
      {0, Property::scale, 0, 0.15, 0.7, 0.85, 1},
      {0, Property::opacity, 0.15, 0.55, 1, 1, 1},
      {0, Property::scale, 0.15, 0.55, 1, 1, 1},
      {0, Property::opacity, 0.55, 0.8, 1, 0.5, 0},
      {0, Property::scale, 0.55, 0.8, 1, 1, 1},
  });
  expectGoneAt(0.8);
}

TEST_F(CourseTest, ScanSweep) {
  ProbeTouchOverlay::showScan();
  std::vector<Course> courses = {
      // Its middle: one below the upper edge, one above the lower.
      {0, Property::positionY, 0, 0.1, 1, 1, 1},
      {0, Property::positionY, 0.1, 0.7, 1, 400, 799},
      {0, Property::positionY, 0.7, 0.9, 799, 799, 799},
      {0, Property::positionX, 0.1, 0.7, 200, 200, 200},
      {0, Property::opacity, 0, 0.7, 1, 1, 1},
      {0, Property::opacity, 0.7, 0.9, 1, 0.5, 0},
  };
  for (const std::size_t band : {1U, 2U}) {
    courses.push_back({band, Property::opacity, 0, 0.1, 0, 0.5, 1});
    courses.push_back({band, Property::opacity, 0.1, 0.7, 1, 1, 1});
    courses.push_back({band, Property::opacity, 0.7, 0.9, 1, 0.5, 0});
  }
  expectCourses(courses);
  expectGoneAt(0.9);
}

TEST_F(CourseTest, CaptureFlash) {
  ProbeTouchOverlay::showCaptureFlash();
  expectCourses({
      {0, Property::opacity, 0, 0.08, 0, 0.35, 0.7},
      {0, Property::opacity, 0.08, 0.33, 0.7, 0.35, 0},
  });
  expectGoneAt(0.33);
}

TEST_F(CourseTest, DataPulse) {
  ProbeTouchOverlay::showDataPulse("perf");
  std::vector<Course> courses;
  for (const std::size_t ring : {0U, 1U, 2U}) {
    const double begin = 0.15 * static_cast<double>(ring);
    if (begin > 0) {
      courses.push_back({ring, Property::opacity, 0, begin, 0, 0, 0});
      courses.push_back({ring, Property::scale, 0, begin, 0.5, 0.5, 0.5});
    }
    courses.push_back({ring, Property::opacity, begin, begin + 0.4, 0, easedOut, 1});
    courses.push_back(
        {ring, Property::scale, begin, begin + 0.4, 0.5, between(0.5, 1, easedOut), 1});
    courses.push_back({ring, Property::opacity, begin + 0.4, begin + 0.7, 1, 0.5, 0});
    courses.push_back({ring, Property::scale, begin + 0.4, begin + 0.7, 1, 1.5, 2});
  }
  expectCourses(courses);
  expectGoneAt(1);
}

TEST_F(CourseTest, VerifyBadge) {
  ProbeTouchOverlay::showVerifyResult(true, "");
  expectCourses({
      {0, Property::opacity, 0, 0.3, 0, sprung05, 1},
      {0, Property::scale, 0, 0.3, 0.3, between(0.3, 1, sprung05), 1},
      {0, Property::opacity, 0.3, 0.9, 1, 1, 1},
      {0, Property::scale, 0.3, 0.9, 1, 1, 1},
      {0, Property::opacity, 0.9, 1.15, 1, 0.5, 0},
      {0, Property::scale, 0.9, 1.15, 1, 1, 1},
  });
  expectGoneAt(1.15);
}

TEST_F(CourseTest, ASpringOvershootsBeforeItRests) {
  ProbeTouchOverlay::showTap({100, 200});
  const Layers layers = effectLayers();
  frameAt(0);
  for (const auto& [time, progress] : std::vector<std::pair<double, double>>{
           {0.025, 0.4160388}, {0.0625, 1.0340463}, {0.125, 1.0200202}, {0.1875, 0.9941775}}) {
    frameAt(time);
    EXPECT_NEAR(seen(*layers.at(0), Property::scale), between(0.3, 1, progress), tolerance) << time;
  }
}

class OrbCourseTest : public CourseTest {
 protected:
  static Layers onlyOrb() { return {ProbeTouchOverlay::detail::state().orb}; }

  /// When what is looked at began; the display's time only goes on.
  double began_ = 0;
};

TEST_F(OrbCourseTest, ComesUpLikeASpring) {
  ProbeTouchOverlay::showOrb(ProbeToolCategory::input, std::nullopt);
  expectCourses(onlyOrb(), {
                               {0, Property::opacity, 0, 0.2, 0, sprung08, 1},
                               {0, Property::scale, 0, 0.2, 0.8, between(0.8, 1, sprung08), 1},
                               {0, Property::translationY, 0, 0.2, 10, between(10, 0, sprung08), 0},
                           });
}

TEST_F(OrbCourseTest, SinksWhileItFades) {
  struct Row {
    std::function<void()> act;
    std::chrono::milliseconds stays;
    double fade;
  };
  for (const Row& row : {
           Row{[] {}, std::chrono::seconds(3), 0.4},
           Row{[] { ProbeTouchOverlay::hideOrb(); }, std::chrono::milliseconds(500), 0.3},
       }) {
    ProbeTouchOverlay::detail::state() = {};
    ProbeTouchOverlay::showOrb(ProbeToolCategory::input, std::nullopt);
    row.act();
    const double begin = began_;
    frameAt(begin);
    frameAt(begin + 0.3);
    world_.mainQueue.advance(row.stays - std::chrono::milliseconds(1));
    frameAt(begin + 0.4);
    EXPECT_EQ(orbOpacity(), 1);
    world_.mainQueue.advance(std::chrono::milliseconds(1));
    expectCourses(onlyOrb(),
                  {
                      {0, Property::opacity, begin + 1, begin + 1 + row.fade, 1, 0.5, 0},
                      {0, Property::translationY, begin + 1, begin + 1 + row.fade, 0, 5, 10},
                      {0, Property::scale, begin + 1, begin + 1 + row.fade, 1, 1, 1},
                  });
    frameAt(begin + 1 + row.fade + moment);
    expectRest();
    began_ += 10;
  }
}

TEST_F(OrbCourseTest, ItsBandOfLightPassesEvenly) {
  ProbeTouchOverlay::showOrb(ProbeToolCategory::input, std::nullopt);
  const auto band = [] { return seen(orb().glowLayer(), Property::positionX); };
  frameAt(0);
  EXPECT_NEAR(band(), -140, tolerance);
  frameAt(0.6);
  EXPECT_NEAR(band(), 70, tolerance);
  frameAt(1.2 - moment);
  EXPECT_NEAR(band(), 280, tolerance);
  frameAt(1.2 + moment);
  EXPECT_NEAR(band(), -140, tolerance) << "and again";
}

}  // namespace
}  // namespace tarnix::tests
