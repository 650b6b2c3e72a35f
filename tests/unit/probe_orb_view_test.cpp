#include "probe/overlay/probe_orb_view.h"

#include "tests/unit/overlay_world.h"

namespace tarnix::tests {
namespace {

using namespace std::chrono_literals;
using overlay::Property;

TEST(ProbeToolCategory, NamesEachToolWithALabelAnIconAndAColour) {
  struct Row {
    ProbeToolCategory category;
    const char* label;
    const char* icon;
    platform::Color color;
  };
  const Row rows[] = {
      {ProbeToolCategory::input, "INPUT", "◉", {0, 122 / 255.0, 1, 1}},
      {ProbeToolCategory::scanning, "SCANNING", "⧖", {50 / 255.0, 173 / 255.0, 230 / 255.0, 1}},
      {ProbeToolCategory::capture, "CAPTURE", "◎", {1, 1, 1, 1}},
      {ProbeToolCategory::reading, "READING", "≡", {0.6, 0.4, 1.0, 1.0}},
      {ProbeToolCategory::verifying, "VERIFYING", "✓", {52 / 255.0, 199 / 255.0, 89 / 255.0, 1}},
      {ProbeToolCategory::environment, "ENV", "⇄", {1, 149 / 255.0, 0, 1}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(label(row.category), row.label);
    EXPECT_EQ(icon(row.category), row.icon);
    EXPECT_EQ(color(row.category), row.color);
  }
}

TEST(ProbeOrbView, IsAPillWithAnIconAndAText) {
  const ProbeOrbView orb({{130, 704}, ProbeOrbView::orbSize});
  EXPECT_EQ(orb.cornerRadius, 18);
  EXPECT_TRUE(orb.clipsToBounds);
  EXPECT_EQ(orb.borderWidth, 1.5);
  EXPECT_EQ(orb.borderColor, (platform::Color{0, 122 / 255.0, 1, 0.6}));
  EXPECT_EQ(orb.blurView().size(), orb.size());
  EXPECT_GT(orb.blurView().radius, 0);
  EXPECT_GT(orb.blurView().tint.alpha, 0.5) << "colours are read over it";
  EXPECT_LT(orb.blurView().tint.alpha, 1);
  EXPECT_EQ(orb.glowLayer().size(), orb.size());
  EXPECT_EQ(orb.glowLayer().cornerRadius, 18);
  EXPECT_EQ(orb.glowLayer().superlayer(), &orb.blurView());
  EXPECT_EQ(orb.iconLabel().font, (platform::Font{13, false}));
  EXPECT_EQ(orb.iconLabel().alignment, platform::TextLine::Alignment::centered);
  EXPECT_EQ(orb.iconLabel().size(), (platform::Size{24, 36}));
  EXPECT_EQ(orb.iconLabel().value(Property::positionX), 18);
  EXPECT_EQ(orb.textLabel().font, (platform::Font{10, true}));
  EXPECT_EQ(orb.textLabel().size(), (platform::Size{104, 36}));
  EXPECT_EQ(orb.textLabel().value(Property::positionX), 82);
  EXPECT_EQ(orb.pulseAnimation(), nullptr);
}

TEST(ProbeOrbView, TakesTheToolsColour) {
  ProbeOrbView orb({{0, 0}, ProbeOrbView::orbSize});
  orb.configure(ProbeToolCategory::environment, std::nullopt);
  const platform::Color orange{1, 149 / 255.0, 0, 1};
  EXPECT_EQ(orb.textLabel().text, "ENV");
  EXPECT_EQ(orb.textLabel().textColor, orange);
  EXPECT_EQ(orb.iconLabel().text, "⇄");
  EXPECT_EQ(orb.iconLabel().textColor, orange);
  EXPECT_EQ(orb.borderColor, orange.withAlpha(0.5));
  EXPECT_EQ(
      orb.glowLayer().stops,
      (std::vector<platform::HorizontalGradient::Stop>{
          {0, orange.withAlpha(0)}, {0.5, orange.withAlpha(0.15)}, {1, orange.withAlpha(0)}}));
  orb.configure(ProbeToolCategory::reading, "perf");
  EXPECT_EQ(orb.textLabel().text, "perf");
  orb.configure(ProbeToolCategory::reading, "");
  EXPECT_EQ(orb.textLabel().text, "") << "an empty detail is one";
}

TEST(ProbeOrbView, ShimmersFromTheLeftToTheRightForever) {
  ProbeOrbView orb({{0, 0}, ProbeOrbView::orbSize});
  orb.configure(ProbeToolCategory::input, std::nullopt);
  orb.advance(50);
  ASSERT_NE(orb.pulseAnimation(), nullptr);
  EXPECT_EQ(orb.glowLayer().valueSeen(Property::positionX, 50), -140);
  EXPECT_NEAR(orb.glowLayer().valueSeen(Property::positionX, 50.6), 70, 1e-9);
  EXPECT_NEAR(orb.glowLayer().valueSeen(Property::positionX, 51.199), 280, 1);
  EXPECT_NEAR(orb.glowLayer().valueSeen(Property::positionX, 51.8), 70, 1e-9);
  orb.configure(ProbeToolCategory::input, std::nullopt);
  EXPECT_FALSE(orb.pulseAnimation()->addedAt) << "it begins again";
}

class OrbTest : public OverlayTest {};

TEST_F(OrbTest, StandsAtTheLowerEdge) {
  world_.overlaySurfaces.window->bottomInset = 34;
  ProbeTouchOverlay::showOrb(ProbeToolCategory::input, "go");
  EXPECT_EQ(frameOf(orb()), (platform::Rect{{130, 706}, {140, 36}}));
}

TEST_F(OrbTest, ComesUpLikeASpring) {
  ProbeTouchOverlay::showOrb(ProbeToolCategory::input, std::nullopt);
  const overlay::TimingCurve spring = overlay::TimingCurve::spring(0.8);
  for (const double time : {0.0, 0.1, 0.2}) {
    frameAt(time);
    const double progress = spring.progressAt(time / 0.2);
    EXPECT_NEAR(orbOpacity(), progress, 1e-6) << time;
    EXPECT_NEAR(seen(orb(), Property::scale), 0.8 + 0.2 * progress, 1e-6) << time;
    EXPECT_NEAR(seen(orb(), Property::translationY), 10 * (1 - progress), 1e-6) << time;
  }
}

TEST_F(OrbTest, FadesAfterThreeSecondsAndCostsNothingThen) {
  ProbeTouchOverlay::showOrb(ProbeToolCategory::input, std::nullopt);
  frameAt(0);
  framesFrom(0, 2.9);
  EXPECT_EQ(orbOpacity(), 1);
  world_.mainQueue.advance(101ms);
  frameAt(3);
  EXPECT_EQ(orbOpacity(), 1);
  frameAt(3.2);
  EXPECT_NEAR(orbOpacity(), 0.5, 1e-6);
  EXPECT_NEAR(seen(orb(), Property::translationY), 5, 1e-6);
  EXPECT_EQ(seen(orb(), Property::scale), 1);
  frameAt(3.4 + 1e-9);
  EXPECT_EQ(orbOpacity(), 0);
  EXPECT_EQ(seen(orb(), Property::translationY), 10);
  expectRest();
  EXPECT_EQ(ProbeTouchOverlay::detail::state().hideTimer, nullptr);
}

TEST_F(OrbTest, StaysUntilThreeSecondsAfterTheLastCall) {
  ProbeTouchOverlay::showOrb(ProbeToolCategory::input, std::nullopt);
  frameAt(0);
  framesFrom(0, 2);
  ProbeTouchOverlay::showOrb(ProbeToolCategory::reading, std::nullopt);
  framesFrom(2, 4.9);
  EXPECT_EQ(orbOpacity(), 1);
  framesFrom(4.9, 5.6);
  EXPECT_EQ(orbOpacity(), 0);
  expectRest();
}

TEST_F(OrbTest, HidesHalfASecondAfterItIsTold) {
  ProbeTouchOverlay::showOrb(ProbeToolCategory::input, std::nullopt);
  ProbeTouchOverlay::hideOrb();
  frameAt(0);
  framesFrom(0, 0.45);
  EXPECT_EQ(orbOpacity(), 1);
  framesFrom(0.45, 0.65);
  EXPECT_GT(orbOpacity(), 0);
  EXPECT_LT(orbOpacity(), 1);
  framesFrom(0.65, 0.9);
  EXPECT_EQ(orbOpacity(), 0);
  expectRest();
}

TEST_F(OrbTest, HidingNothingDoesNothing) {
  ProbeTouchOverlay::hideOrb();
  world_.mainQueue.advance(1s);
  ProbeTouchOverlay::showOrb(ProbeToolCategory::input, std::nullopt);
  frameAt(0);
  framesFrom(0, 4);
  ProbeTouchOverlay::hideOrb();
  world_.mainQueue.advance(1s);
  EXPECT_EQ(orbOpacity(), 0);
  expectRest();
}

TEST_F(OrbTest, ComesBackAsTheSameView) {
  ProbeTouchOverlay::showOrb(ProbeToolCategory::input, std::nullopt);
  const ProbeOrbView* const first = &orb();
  frameAt(0);
  framesFrom(0, 4);
  expectRest();
  ProbeTouchOverlay::showOrb(ProbeToolCategory::reading, std::nullopt);
  EXPECT_EQ(&orb(), first);
  frameAt(10);
  frameAt(10.2);
  EXPECT_EQ(orbOpacity(), 1);
  EXPECT_EQ(orb().textLabel().text, "READING");
}

TEST_F(OrbTest, TurnsBackInTheMiddleOfItsFade) {
  ProbeTouchOverlay::showOrb(ProbeToolCategory::input, std::nullopt);
  frameAt(0);
  framesFrom(0, 3.2);
  const double opacity = orbOpacity();
  EXPECT_LT(opacity, 0.9);
  EXPECT_GT(opacity, 0.1);
  ProbeTouchOverlay::showOrb(ProbeToolCategory::input, std::nullopt);
  EXPECT_NEAR(orbOpacity(), opacity, 1e-9) << "without a jump";
  framesFrom(3.2, 3.5);
  EXPECT_EQ(orbOpacity(), 1);
}

}  // namespace
}  // namespace tarnix::tests
