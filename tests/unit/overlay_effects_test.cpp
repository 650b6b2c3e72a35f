#include <cmath>

#include "probe/overlay/label.h"
#include "probe/overlay/timing_curve.h"
#include "tests/unit/overlay_world.h"

namespace tarnix::tests {
namespace {

using overlay::Layer;
using overlay::Property;
using overlay::TimingCurve;

constexpr platform::Color blue{0, 122 / 255.0, 1, 1};
constexpr platform::Color cyan{50 / 255.0, 173 / 255.0, 230 / 255.0, 1};
constexpr platform::Color green{52 / 255.0, 199 / 255.0, 89 / 255.0, 1};
constexpr platform::Color red{1, 59 / 255.0, 48 / 255.0, 1};
constexpr platform::Color white{1, 1, 1, 1};

// Frames are compared with ends that were reached by adding fractions up.
constexpr double moment = 1e-9;

class EffectTest : public OverlayTest {
 protected:
  EffectTest() {
    ProbeTouchOverlay::detail::overlayWindow();
    fakes::FakeServices::shared().reset();
  }

  std::shared_ptr<Layer> only() {
    const auto layers = effectLayers();
    EXPECT_EQ(layers.size(), 1U);
    return layers.at(0);
  }

  struct Moment {
    double time;
    double opacity;
    double scale;
  };

  void expectCourse(const Layer& layer, const std::vector<Moment>& course) {
    for (const Moment& point : course) {
      frameAt(point.time);
      EXPECT_NEAR(seen(layer, Property::opacity), point.opacity, 1e-6) << point.time;
      EXPECT_NEAR(seen(layer, Property::scale), point.scale, 1e-6) << point.time;
    }
  }

  void expectGoneAt(double time) {
    frameAt(time - 2 * moment - 1e-6);
    EXPECT_FALSE(effectLayers().empty());
    frameAt(time + moment);
    EXPECT_TRUE(effectLayers().empty());
    framesFrom(time, time + 5);
    expectRest();
    EXPECT_TRUE(world_.overlaySurfaces.shown.empty());
  }

  std::string orbText() const { return orb().textLabel().text; }
  std::string orbIcon() const { return orb().iconLabel().text; }
};

TEST_F(EffectTest, TapRing) {
  ProbeTouchOverlay::showTap({100.9, 200.2});
  EXPECT_EQ(standardError(), "[TarnixProbe] TouchOverlay: showTap at 100,200\n");
  EXPECT_EQ(orbText(), "tap 100,200");
  EXPECT_EQ(orbIcon(), "◉");
  const auto ring = only();
  EXPECT_NEAR(frameOf(*ring).origin.x, 78.9, 1e-9);
  EXPECT_NEAR(frameOf(*ring).origin.y, 178.2, 1e-9);
  EXPECT_EQ(ring->size(), (platform::Size{44, 44}));
  EXPECT_EQ(ring->cornerRadius, 22);
  EXPECT_EQ(ring->backgroundColor, blue.withAlpha(0.35));
  EXPECT_EQ(ring->borderWidth, 2);
  EXPECT_EQ(ring->borderColor, blue.withAlpha(0.7));
  const Layer& dot = *ring->sublayers().at(0);
  EXPECT_EQ(frameOf(dot), (platform::Rect{{18, 18}, {8, 8}}));
  EXPECT_EQ(dot.cornerRadius, 4);
  EXPECT_EQ(dot.backgroundColor, white);
  const double halfSprung = TimingCurve::spring(0.6).progressAt(0.5);
  expectCourse(*ring, {{0, 1, 0.3},
                       {0.125, 1, 0.3 + 0.7 * halfSprung},
                       {0.25, 1, 1},
                       {0.35, 1, 1},
                       {0.5, 0.5, 1.25}});
  expectGoneAt(0.65);
}

TEST_F(EffectTest, TwoTapsAreTwoRings) {
  ProbeTouchOverlay::showTap({10, 20});
  frameAt(0);
  frameAt(0.2);
  ProbeTouchOverlay::showTap({-30, 40});
  EXPECT_EQ(effectLayers().size(), 2U);
  EXPECT_EQ(orbText(), "tap -30,40");
  frameAt(0.3);
  frameAt(0.65 + moment);
  EXPECT_EQ(effectLayers().size(), 1U);
  EXPECT_EQ(frameOf(*only()).origin, (platform::Point{-52, 18}));
  expectGoneAt(0.95);
}

TEST_F(EffectTest, SwipeTrail) {
  ProbeTouchOverlay::showSwipe({10.5, 20.5}, {110.5, 20.5});
  EXPECT_EQ(standardError(), "[TarnixProbe] TouchOverlay: showSwipe 10,20 -> 110,20\n");
  EXPECT_EQ(orbText(), "swipe");
  const auto layers = effectLayers();
  ASSERT_EQ(layers.size(), 4U);
  const Layer& trail = *layers[0];
  EXPECT_EQ(frameOf(*layers[1]), (platform::Rect{{5.5, 15.5}, {10, 10}}));
  EXPECT_EQ(layers[1]->cornerRadius, 5);
  EXPECT_EQ(layers[1]->backgroundColor, blue.withAlpha(0.8));
  EXPECT_EQ(frameOf(*layers[2]), (platform::Rect{{102.5, 12.5}, {16, 16}}));
  EXPECT_EQ(layers[2]->cornerRadius, 8);
  EXPECT_EQ(layers[2]->backgroundColor, blue.withAlpha(0.5));
  EXPECT_EQ(layers[2]->borderWidth, 2);
  EXPECT_EQ(layers[2]->borderColor, blue);
  for (const auto& [time, drawn] :
       std::vector<std::pair<double, double>>{{0, 0}, {0.175, 0.5}, {0.35, 1}}) {
    frameAt(time);
    EXPECT_NEAR(seen(trail, Property::strokeEnd), drawn, 1e-9) << time;
    for (const auto& layer : layers) {
      EXPECT_EQ(seen(*layer, Property::opacity), 1);
    }
  }
  ASSERT_NE(trail.animation("fade"), nullptr);
  EXPECT_TRUE(trail.animation("fade")->staysAtEnd);
  for (const auto& [time, opacity] :
       std::vector<std::pair<double, double>>{{0.5, 1}, {0.65, 0.5}}) {
    frameAt(time);
    for (const auto& layer : layers) {
      EXPECT_NEAR(seen(*layer, Property::opacity), opacity, 1e-6) << time;
    }
  }
  expectGoneAt(0.8);
}

TEST_F(EffectTest, SwipeStrokes) {
  ProbeTouchOverlay::showSwipe({10, 20}, {110, 20});
  frameAt(0);
  frameAt(0.35);
  std::vector<platform::Stroke> strokes;
  for (const platform::Figure& figure : world_.overlaySurfaces.shown) {
    if (const auto* const stroke = std::get_if<platform::Stroke>(&figure.at(0).shape)) {
      strokes.push_back(*stroke);
    }
  }
  ASSERT_EQ(strokes.size(), 2U);
  EXPECT_EQ(strokes[0], (platform::Stroke{{{{10, 20}, {110, 20}}}, 3, blue.withAlpha(0.6)}));
  EXPECT_EQ(strokes[1].width, 2.5);
  EXPECT_EQ(strokes[1].color, blue.withAlpha(0.8));
  ASSERT_EQ(strokes[1].lines.size(), 2U);
  double side = -1;
  for (const std::vector<platform::Point>& line : strokes[1].lines) {
    ASSERT_EQ(line.size(), 2U);
    EXPECT_EQ(line[0], (platform::Point{110, 20}));
    const double angle = std::atan2(line[1].y - 20, 110 - line[1].x);
    EXPECT_NEAR(angle, -side * M_PI / 6, 1e-9);
    side = 1;
  }
}

TEST_F(EffectTest, SwipeThatStaysWhereItIs) {
  ProbeTouchOverlay::showSwipe({50, 50}, {50, 50});
  EXPECT_EQ(effectLayers().size(), 4U);
  frameAt(0);
  frameAt(0.2);
  EXPECT_EQ(world_.overlaySurfaces.shown.size(), 5U) << "with the orb";
  expectGoneAt(0.8);
}

TEST_F(EffectTest, TypingBadge) {
  ProbeTouchOverlay::showTypeText(platform::Point{100, 200});
  EXPECT_EQ(standardError(), "");
  EXPECT_EQ(orbText(), "typing");
  EXPECT_EQ(orbIcon(), "◉");
  const auto badge = std::dynamic_pointer_cast<overlay::Label>(only());
  ASSERT_NE(badge, nullptr);
  EXPECT_EQ(badge->text, "  abc  ");
  EXPECT_EQ(badge->font, (platform::Font{11, false}));
  EXPECT_EQ(badge->textColor, white);
  EXPECT_EQ(badge->backgroundColor, blue.withAlpha(0.8));
  EXPECT_EQ(badge->cornerRadius, 10);
  EXPECT_TRUE(badge->clipsToBounds);
  EXPECT_EQ(badge->size(), (platform::Size{11 * 7 / 2.0, 20}));
  EXPECT_EQ(badge->value(Property::positionX), 100);
  EXPECT_EQ(badge->value(Property::positionY), 170);
  expectCourse(*badge,
               {{0, 0, 0.7}, {0.075, 0.5, 0.85}, {0.15, 1, 1}, {0.55, 1, 1}, {0.675, 0.5, 1}});
  expectGoneAt(0.8);
}

TEST_F(EffectTest, TypingBadgeWithoutAPlace) {
  ProbeTouchOverlay::showTypeText(std::nullopt);
  EXPECT_EQ(only()->value(Property::positionX), 200);
  EXPECT_EQ(only()->value(Property::positionY), 720);
}

TEST_F(EffectTest, ScanSweep) {
  ProbeTouchOverlay::showScan();
  EXPECT_EQ(standardError(), "[TarnixProbe] TouchOverlay: showScan\n");
  EXPECT_EQ(orbText(), "screen");
  EXPECT_EQ(orbIcon(), "⧖");
  const auto layers = effectLayers();
  ASSERT_EQ(layers.size(), 3U);
  const Layer& line = *layers[0];
  EXPECT_EQ(frameOf(line), (platform::Rect{{0, 0}, {400, 2}}));
  EXPECT_EQ(line.backgroundColor, cyan.withAlpha(0.8));
  EXPECT_EQ(line.shadow, (platform::Shadow{cyan.withAlpha(0.9), 8}));
  EXPECT_EQ(frameOf(*layers[1]), (platform::Rect{{0, 0}, {400, 3}}));
  EXPECT_EQ(frameOf(*layers[2]), (platform::Rect{{0, 797}, {400, 3}}));
  EXPECT_EQ(layers[1]->backgroundColor, cyan.withAlpha(0.15));
  EXPECT_EQ(layers[2]->backgroundColor, cyan.withAlpha(0.15));
  struct Row {
    double time;
    double lineOpacity;
    double lineMiddle;
    double bandOpacity;
  };
  for (const Row& row : {Row{0, 1, 1, 0}, Row{0.05, 1, 1, 0.5}, Row{0.1, 1, 1, 1},
                         Row{0.4, 1, 400, 1}, Row{0.7, 1, 799, 1}, Row{0.8, 0.5, 799, 0.5}}) {
    frameAt(row.time);
    EXPECT_NEAR(seen(line, Property::opacity), row.lineOpacity, 1e-6) << row.time;
    EXPECT_NEAR(seen(line, Property::positionY), row.lineMiddle, 1e-3) << row.time;
    EXPECT_NEAR(seen(*layers[1], Property::opacity), row.bandOpacity, 1e-6) << row.time;
    EXPECT_NEAR(seen(*layers[2], Property::opacity), row.bandOpacity, 1e-6) << row.time;
  }
  expectGoneAt(0.9);
}

TEST_F(EffectTest, CaptureFlash) {
  ProbeTouchOverlay::showCaptureFlash();
  EXPECT_EQ(standardError(), "[TarnixProbe] TouchOverlay: showCaptureFlash\n");
  EXPECT_EQ(orbText(), "screenshot");
  EXPECT_EQ(orbIcon(), "◎");
  const auto flash = only();
  EXPECT_EQ(frameOf(*flash), (platform::Rect{{0, 0}, {400, 800}}));
  EXPECT_EQ(flash->backgroundColor, white);
  expectCourse(*flash, {{0, 0, 1}, {0.04, 0.35, 1}, {0.08, 0.7, 1}, {0.205, 0.35, 1}});
  expectGoneAt(0.33);
}

TEST_F(EffectTest, DataPulse) {
  ProbeTouchOverlay::showDataPulse("perf");
  EXPECT_EQ(standardError(), "[TarnixProbe] TouchOverlay: showDataPulse — perf\n");
  EXPECT_EQ(orbText(), "perf");
  EXPECT_EQ(orbIcon(), "≡");
  const auto rings = effectLayers();
  ASSERT_EQ(rings.size(), 3U);
  for (const auto& ring : rings) {
    EXPECT_EQ(frameOf(*ring), (platform::Rect{{358, 38}, {24, 24}}));
    EXPECT_EQ(ring->cornerRadius, 12);
    EXPECT_EQ(ring->backgroundColor.alpha, 0);
    EXPECT_EQ(ring->borderWidth, 1.5);
    EXPECT_EQ(ring->borderColor, (platform::Color{0.6, 0.4, 1.0, 0.7}));
  }
  const double eased = TimingCurve::easeOut().progressAt(0.5);
  expectCourse(*rings[0], {{0, 0, 0.5},
                           {0.15, TimingCurve::easeOut().progressAt(0.375),
                            0.5 + 0.5 * TimingCurve::easeOut().progressAt(0.375)}});
  EXPECT_EQ(seen(*rings[1], Property::opacity), 0);
  frameAt(0.3);
  EXPECT_EQ(seen(*rings[2], Property::opacity), 0);
  frameAt(0.35);
  EXPECT_NEAR(seen(*rings[1], Property::opacity), eased, 1e-6);
  EXPECT_NEAR(seen(*rings[1], Property::scale), 0.5 + 0.5 * eased, 1e-6);
  frameAt(0.5);
  EXPECT_NEAR(seen(*rings[2], Property::opacity), eased, 1e-6);
  frameAt(0.55);
  EXPECT_NEAR(seen(*rings[0], Property::opacity), 0.5, 1e-6);
  EXPECT_NEAR(seen(*rings[0], Property::scale), 1.5, 1e-6);
  EXPECT_NEAR(seen(*rings[1], Property::opacity), 1, 1e-6);
  frameAt(0.7 + moment);
  EXPECT_EQ(effectLayers().size(), 2U);
  frameAt(0.85 + moment);
  EXPECT_EQ(effectLayers().size(), 1U);
  expectGoneAt(1);
}

TEST_F(EffectTest, VerifyBadge) {
  for (const bool passed : {true, false}) {
    fakes::FakeServices::shared().reset();
    ProbeTouchOverlay::showVerifyResult(passed, "x");
    EXPECT_EQ(standardError(), passed ? "[TarnixProbe] TouchOverlay: showVerify — PASS x\n"
                                      : "[TarnixProbe] TouchOverlay: showVerify — FAIL x\n");
    EXPECT_EQ(orbText(), passed ? "PASS" : "FAIL");
    EXPECT_EQ(orbIcon(), "✓");
    const auto badge = only();
    EXPECT_EQ(frameOf(*badge), (platform::Rect{{176, 336}, {48, 48}}));
    EXPECT_EQ(badge->cornerRadius, 24);
    EXPECT_EQ(badge->backgroundColor, (passed ? green : red).withAlpha(0.9));
    const auto mark = std::dynamic_pointer_cast<overlay::Label>(badge->sublayers().at(0));
    EXPECT_EQ(mark->text, passed ? "✓" : "✗");
    EXPECT_EQ(mark->font, (platform::Font{26, false}));
    EXPECT_EQ(mark->textColor, white);
    EXPECT_EQ(frameOf(*mark), (platform::Rect{{0, 0}, {48, 48}}));
    EXPECT_EQ(mark->alignment, platform::TextLine::Alignment::centered);
    const double begin = passed ? 0 : 10;
    const double sprung = TimingCurve::spring(0.5).progressAt(0.5);
    expectCourse(*badge, {{begin, 0, 0.3},
                          {begin + 0.15, sprung, 0.3 + 0.7 * sprung},
                          {begin + 0.3, 1, 1},
                          {begin + 0.9, 1, 1},
                          {begin + 1.025, 0.5, 1}});
    expectGoneAt(begin + 1.15);
  }
}

TEST_F(EffectTest, EnvironmentSwitch) {
  ProbeTouchOverlay::showEnvironmentSwitch("staging");
  EXPECT_EQ(standardError(), "[TarnixProbe] TouchOverlay: showEnvSwitch — staging\n");
  EXPECT_EQ(orbText(), "staging");
  EXPECT_EQ(orbIcon(), "⇄");
  EXPECT_TRUE(effectLayers().empty());
}

TEST_F(EffectTest, WritesItsLineAlsoWhereNothingCanBeDrawn) {
  ProbeTouchOverlay::detail::state() = {};
  world_.application.scenes.clear();
  ProbeTouchOverlay::showScan();
  EXPECT_EQ(standardError(),
            "[TarnixProbe] TouchOverlay: showScan\n"
            "[TarnixProbe] TouchOverlay: no window scene found\n"
            "[TarnixProbe] TouchOverlay: no window scene found\n");
}

}  // namespace
}  // namespace tarnix::tests
