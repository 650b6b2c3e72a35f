#include "probe/overlay/passthrough_window.h"

#include "tests/unit/overlay_world.h"

namespace tarnix::tests {
namespace {

using overlay::Property;

constexpr const char* windowCreated = "[TarnixProbe] TouchOverlay: overlay window created\n";
constexpr const char* noScene = "[TarnixProbe] TouchOverlay: no window scene found\n";

class OverlayWindowTest : public OverlayTest {
 protected:
  std::shared_ptr<fakes::FakeWindowScene> addScene(bool isActive) {
    auto scene = std::make_shared<fakes::FakeWindowScene>();
    scene->foregroundActive = isActive;
    world_.application.scenes.push_back(scene);
    return scene;
  }
};

TEST_F(OverlayWindowTest, TakesNoTouch) {
  ProbeTouchOverlay::showTap({100, 200});
  const PassthroughWindow& window = *ProbeTouchOverlay::detail::overlayWindow();
  EXPECT_EQ(window.hitTest({100, 200}), nullptr);
  EXPECT_EQ(window.hitTest({200, 758}), nullptr) << "the orb";
}

TEST_F(OverlayWindowTest, IsMadeOnceAndSaysSo) {
  PassthroughWindow* const window = ProbeTouchOverlay::detail::overlayWindow();
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(standardError(), windowCreated);
  EXPECT_EQ(ProbeTouchOverlay::detail::overlayWindow(), window);
  EXPECT_EQ(standardError(), windowCreated);
  EXPECT_EQ(world_.overlaySurfaces.madeCount, 0) << "nothing is drawn yet";
}

TEST_F(OverlayWindowTest, PrefersTheSceneThatIsWorkedWith) {
  world_.application.scenes.clear();
  addScene(false);
  const auto active = addScene(true);
  addScene(true);
  EXPECT_EQ(ProbeTouchOverlay::detail::overlayWindow()->windowScene(), active.get());
}

TEST_F(OverlayWindowTest, TakesTheFirstOfScenesInTheBackground) {
  world_.application.scenes.clear();
  const auto first = addScene(false);
  addScene(false);
  ProbeTouchOverlay::showScan();
  EXPECT_EQ(ProbeTouchOverlay::detail::state().window->windowScene(), first.get());
  EXPECT_EQ(world_.overlaySurfaces.lastScene, first.get());
}

TEST_F(OverlayWindowTest, IsMadeAgainWhenItsSceneHasGone) {
  world_.application.scenes.clear();
  const auto old = addScene(true);
  ProbeTouchOverlay::showTap({1, 1});
  frameAt(0);
  old->connected = false;
  const auto next = addScene(true);
  world_.application.scenes.erase(world_.application.scenes.begin());
  fakes::FakeServices::shared().reset();
  ProbeTouchOverlay::showOrb(ProbeToolCategory::input, std::nullopt);
  EXPECT_EQ(standardError(), windowCreated);
  EXPECT_EQ(ProbeTouchOverlay::detail::state().window->windowScene(), next.get());
  EXPECT_TRUE(effectLayers().empty());
  EXPECT_EQ(world_.overlaySurfaces.aliveCount, 1);
  frameAt(1);
  frameAt(1.2);
  EXPECT_EQ(orbOpacity(), 1);
}

TEST_F(OverlayWindowTest, SaysWhenThereIsNoScene) {
  world_.application.scenes.clear();
  EXPECT_EQ(ProbeTouchOverlay::detail::overlayWindow(), nullptr);
  EXPECT_EQ(standardError(), noScene);
  ProbeTouchOverlay::showOrb(ProbeToolCategory::input, std::nullopt);
  EXPECT_EQ(standardError(), std::string(noScene) + noScene);
  EXPECT_EQ(ProbeTouchOverlay::detail::state().orb, nullptr);
  EXPECT_EQ(world_.mainQueue.scheduledCount(), 0U);
}

TEST_F(OverlayWindowTest, DrawsNothingWithoutAWindowOrOnAHostThatCannotBeDrawnOver) {
  world_.overlaySurfaces.window.reset();
  ProbeTouchOverlay::showTap({1, 1});
  expectRest();
  platform::Platform without = platform::current();
  without.overlaySurfaces = nullptr;
  platform::setCurrent(without);
  ProbeTouchOverlay::showTypeText(std::nullopt);
  expectRest();
  EXPECT_EQ(world_.mainQueue.scheduledCount(), 0U);
}

TEST_F(OverlayWindowTest, LeavesNothingWhenTheLastWindowClosesInTheMiddle) {
  ProbeTouchOverlay::showSwipe({10, 10}, {300, 10});
  ProbeTouchOverlay::showVerifyResult(true, "");
  frameAt(0);
  frameAt(0.2);
  EXPECT_FALSE(world_.overlaySurfaces.shown.empty());
  const std::weak_ptr<overlay::Layer> layer = effectLayers().front();
  world_.overlaySurfaces.window.reset();
  frameAt(0.25);
  expectRest();
  EXPECT_TRUE(layer.expired());
  world_.mainQueue.advance(std::chrono::seconds(5));
  expectRest();
  world_.overlaySurfaces.window.emplace();
  ProbeTouchOverlay::showOrb(ProbeToolCategory::input, std::nullopt);
  frameAt(10);
  frameAt(10.2);
  EXPECT_EQ(orbOpacity(), 1);
}

TEST_F(OverlayWindowTest, KeepsEffectsInPlaceWhenAnotherWindowComesToTheFront) {
  world_.overlaySurfaces.window->origin = {100, 100};
  ProbeTouchOverlay::showTap({50, 60});
  frameAt(0);
  world_.overlaySurfaces.window = {{200, 300}, 0, {120, 130}};
  frameAt(0.1);
  const auto ring = effectLayers().at(0);
  EXPECT_EQ(frameOf(*ring), (platform::Rect{{8, 8}, {44, 44}}));
  EXPECT_EQ(frameOf(orb()), (platform::Rect{{30, 240}, {140, 36}})) << "at the new lower edge";
}

TEST_F(OverlayWindowTest, FollowsTheSizeOfItsWindow) {
  ProbeTouchOverlay::showOrb(ProbeToolCategory::input, std::nullopt);
  frameAt(0);
  world_.overlaySurfaces.window->size = {600, 500};
  frameAt(0.1);
  EXPECT_EQ(frameOf(orb()), (platform::Rect{{230, 440}, {140, 36}}));
}

TEST_F(OverlayWindowTest, ShowsAPictureOnlyWhenItHasChanged) {
  ProbeTouchOverlay::showOrb(ProbeToolCategory::input, std::nullopt);
  frameAt(0);
  frameAt(0.05);
  const int before = world_.overlaySurfaces.showCount;
  frameAt(0.05);
  EXPECT_EQ(world_.overlaySurfaces.showCount, before);
  frameAt(0.06);
  EXPECT_EQ(world_.overlaySurfaces.showCount, before + 1);
}

TEST_F(OverlayWindowTest, LeavesNothingBehindAfterAThousandEffects) {
  for (int round = 0; round < 125; ++round) {
    ProbeTouchOverlay::showTap({10, 10});
    ProbeTouchOverlay::showSwipe({10, 10}, {20, 20});
    ProbeTouchOverlay::showTypeText(std::nullopt);
    ProbeTouchOverlay::showScan();
    ProbeTouchOverlay::showCaptureFlash();
    ProbeTouchOverlay::showDataPulse("x");
    ProbeTouchOverlay::showVerifyResult(round % 2 == 0, "x");
    ProbeTouchOverlay::showEnvironmentSwitch("x");
    frameAt(round / 60.0);
  }
  EXPECT_EQ(world_.overlaySurfaces.aliveCount, 1);
  EXPECT_EQ(world_.overlaySurfaces.madeCount, 1);
  framesFrom(125 / 60.0, 7);
  expectRest();
  EXPECT_EQ(ProbeTouchOverlay::detail::state().window->tree().sublayers().size(), 1U) << "the orb";
}

}  // namespace
}  // namespace tarnix::tests
