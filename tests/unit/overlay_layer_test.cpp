#include <gtest/gtest.h>

#include "probe/overlay/animator.h"
#include "probe/overlay/gradient_layer.h"
#include "probe/overlay/layer.h"
#include "probe/overlay/shape_layer.h"

namespace tarnix::tests {
namespace {

using overlay::Animation;
using overlay::Animator;
using overlay::Layer;
using overlay::Property;

struct Scene {
  Scene() { root.add(layer); }

  Layer root{{{0, 0}, {100, 100}}};
  std::shared_ptr<Layer> layer = std::make_shared<Layer>(platform::Rect{{10, 20}, {40, 20}});
  Animator animator;
};

platform::Shape onlyShapeOf(const Layer& root, double now = 0) {
  const platform::DisplayList list = root.displayList(now);
  EXPECT_EQ(list.size(), 1U);
  return list.at(0).at(0).shape;
}

TEST(OverlayLayer, IsDrawnAroundItsMiddle) {
  Scene scene;
  scene.layer->backgroundColor = {1, 0, 0, 1};
  scene.layer->setValue(Property::scale, 0.5);
  scene.layer->setValue(Property::translationY, 3);
  const platform::DisplayList list = scene.root.displayList(0);
  ASSERT_EQ(list.size(), 1U);
  const platform::Transform& transform = list[0].at(0).transform;
  EXPECT_EQ(transform.apply({20, 10}), (platform::Point{30, 33}));
  EXPECT_EQ(transform.apply({0, 0}), (platform::Point{20, 28}));
}

TEST(OverlayLayer, PassesOpacityTransformAndClipOn) {
  Scene scene;
  scene.layer->clipsToBounds = true;
  scene.layer->cornerRadius = 5;
  scene.layer->setValue(Property::opacity, 0.5);
  scene.layer->setValue(Property::scale, 2);
  const auto inner = std::make_shared<Layer>(platform::Rect{{30, 0}, {40, 20}});
  inner->backgroundColor = {0, 1, 0, 1};
  inner->setValue(Property::opacity, 0.5);
  scene.layer->add(inner);
  const platform::DisplayList list = scene.root.displayList(0);
  ASSERT_EQ(list.size(), 1U);
  const platform::DrawingCommand& command = list[0].at(0);
  EXPECT_EQ(command.opacity, 0.25);
  EXPECT_EQ(command.transform.apply({0, 0}), (platform::Point{50, 10}));
  ASSERT_TRUE(command.clip);
  EXPECT_EQ(command.clip->frame, (platform::Rect{{0, 0}, {40, 20}}));
  EXPECT_EQ(command.clip->transform.apply({0, 0}), (platform::Point{-10, 10}));
  EXPECT_EQ(command.clip->cornerRadius, 5);
}

TEST(OverlayLayer, WithoutAnythingToSeeIsNotDrawn) {
  Scene scene;
  EXPECT_TRUE(scene.root.displayList(0).empty());
  scene.layer->backgroundColor = {1, 0, 0, 1};
  EXPECT_EQ(scene.root.displayList(0).size(), 1U);
  scene.layer->setValue(Property::opacity, 0);
  EXPECT_TRUE(scene.root.displayList(0).empty());
}

TEST(OverlayLayer, DrawsTheBorderOfAClippingLayerOverWhatIsInIt) {
  Scene scene;
  scene.layer->borderWidth = 1;
  scene.layer->borderColor = {0, 0, 1, 1};
  scene.layer->clipsToBounds = true;
  const auto inner = std::make_shared<Layer>(platform::Rect{{0, 0}, {40, 20}});
  inner->backgroundColor = {0, 1, 0, 1};
  scene.layer->add(inner);
  const platform::Figure figure = scene.root.displayList(0).at(0);
  ASSERT_EQ(figure.size(), 2U);
  EXPECT_EQ(std::get<platform::RoundedRectangle>(figure[0].shape).fill, inner->backgroundColor);
  EXPECT_EQ(std::get<platform::RoundedRectangle>(figure[1].shape).borderWidth, 1);
  EXPECT_FALSE(figure[1].clip);
}

TEST(OverlayLayer, LeavesItsTreeWhole) {
  auto root = std::make_unique<Layer>(platform::Rect{});
  const auto layer = std::make_shared<Layer>(platform::Rect{});
  root->add(layer);
  EXPECT_EQ(layer->superlayer(), root.get());
  layer->removeFromSuperlayer();
  EXPECT_EQ(layer->superlayer(), nullptr);
  layer->removeFromSuperlayer();
  root->add(layer);
  root = nullptr;
  EXPECT_EQ(layer->superlayer(), nullptr);
  layer->removeFromSuperlayer();
}

TEST(OverlayAnimation, IsWhereItStartsUntilTheNextFrame) {
  Scene scene;
  scene.layer->setValue(Property::scale, 0.5);
  scene.animator.animate({.duration = 1, .delay = 0.5, .curve = overlay::TimingCurve::linear()},
                         {{scene.layer, Property::scale, 1.5}});
  EXPECT_EQ(scene.layer->value(Property::scale), 1.5);
  for (const auto& [time, value] : std::vector<std::pair<double, double>>{
           {100, 0.5}, {100.5, 0.5}, {101, 1}, {101.25, 1.25}, {101.5, 1.5}, {200, 1.5}}) {
    scene.animator.advance(scene.root, time);
    EXPECT_DOUBLE_EQ(scene.layer->valueSeen(Property::scale, time), value) << time;
  }
  EXPECT_FALSE(scene.root.needsFrames(200));
}

TEST(OverlayAnimation, GoesOnFromWhatIsSeenWhenItIsReplaced) {
  Scene scene;
  const auto fade = [&scene](double value) {
    scene.animator.animate({.duration = 1, .curve = overlay::TimingCurve::linear()},
                           {{scene.layer, Property::opacity, value}});
  };
  fade(0);
  scene.animator.advance(scene.root, 10);
  scene.animator.advance(scene.root, 10.25);
  fade(1);
  scene.animator.advance(scene.root, 10.25);
  EXPECT_DOUBLE_EQ(scene.layer->valueSeen(Property::opacity, 10.25), 0.75);
  scene.animator.advance(scene.root, 10.75);
  EXPECT_DOUBLE_EQ(scene.layer->valueSeen(Property::opacity, 10.75), 0.875);
}

TEST(OverlayAnimation, ChainsAtItsExactEndWheneverFramesCome) {
  Scene scene;
  std::vector<double> times;
  scene.animator.animate({.duration = 0.25}, {}, [&] {
    times.push_back(scene.animator.now());
    scene.animator.animate({.duration = 0.5, .delay = 0.25}, {},
                           [&] { times.push_back(scene.animator.now()); });
  });
  scene.animator.advance(scene.root, 5);
  EXPECT_TRUE(times.empty());
  scene.animator.advance(scene.root, 50);
  EXPECT_EQ(times, (std::vector<double>{5.25, 6}));
  EXPECT_FALSE(scene.animator.hasPendingCompletions());
  EXPECT_EQ(scene.animator.now(), 50);
}

TEST(OverlayAnimation, RunsCompletionsInTheOrderOfTheirTimes) {
  Scene scene;
  std::string order;
  scene.animator.animate({.duration = 0.3}, {}, [&order] { order += "c"; });
  scene.animator.animate({.duration = 0.1}, {}, [&order] { order += "a"; });
  scene.animator.animate({.duration = 0.2}, {}, [&order] { order += "b"; });
  scene.animator.advance(scene.root, 1);
  scene.animator.advance(scene.root, 2);
  EXPECT_EQ(order, "abc");
}

TEST(OverlayAnimation, StandsStillWhileTheClockFalls) {
  Scene scene;
  scene.animator.animate({.duration = 1}, {{scene.layer, Property::opacity, 0}});
  scene.animator.advance(scene.root, 10);
  scene.animator.advance(scene.root, 10.5);
  scene.animator.advance(scene.root, 3);
  EXPECT_EQ(scene.animator.now(), 10.5);
}

TEST(OverlayAnimation, HoldsItsEndUntilItIsRemovedWhereItIsToStay) {
  Scene scene;
  for (const bool stays : {true, false}) {
    scene.layer->addAnimation("fade", {.property = Property::opacity,
                                       .from = 1,
                                       .to = 0,
                                       .duration = 0.5,
                                       .delay = 0.25,
                                       .staysAtEnd = stays,
                                       .addedAt = 10});
    scene.root.advance(11);
    EXPECT_EQ(scene.layer->valueSeen(Property::opacity, 10.2), stays ? 1 : 1);
    EXPECT_EQ(scene.layer->valueSeen(Property::opacity, 11), stays ? 0 : 1);
    EXPECT_EQ(scene.layer->animation("fade") != nullptr, stays);
    EXPECT_EQ(scene.layer->value(Property::opacity), 1);
    EXPECT_FALSE(scene.root.needsFrames(11));
    scene.layer->removeAnimation("fade");
    EXPECT_EQ(scene.layer->valueSeen(Property::opacity, 11), 1);
  }
}

TEST(OverlayAnimation, RepeatsForeverAsLongAsItCanBeSeen) {
  Scene scene;
  scene.layer->addAnimation("shimmer", {.property = Property::positionX,
                                        .from = -10,
                                        .to = 30,
                                        .duration = 2,
                                        .repeatsForever = true});
  scene.root.advance(100);
  EXPECT_EQ(scene.layer->valueSeen(Property::positionX, 100), -10);
  EXPECT_EQ(scene.layer->valueSeen(Property::positionX, 101), 10);
  EXPECT_EQ(scene.layer->valueSeen(Property::positionX, 102), -10);
  EXPECT_EQ(scene.layer->valueSeen(Property::positionX, 203), 10);
  EXPECT_TRUE(scene.root.needsFrames(203));
  scene.layer->setValue(Property::opacity, 0);
  EXPECT_FALSE(scene.root.needsFrames(203));
  scene.layer->addAnimation("appear", {.property = Property::opacity, .to = 1, .duration = 1});
  EXPECT_TRUE(scene.root.needsFrames(203)) << "it is about to be seen";
}

TEST(OverlayAnimation, MovesAlongWithItsLayer) {
  Scene scene;
  scene.layer->addAnimation(
      "fall",
      {.property = Property::positionY, .from = 0, .to = 100, .duration = 1, .addedAt = 10});
  scene.layer->moveBy({5, -7});
  EXPECT_EQ(scene.layer->valueSeen(Property::positionX, 10.5), 35);
  EXPECT_EQ(scene.layer->valueSeen(Property::positionY, 10.5), 43);
}

TEST(ShapeLayer, DrawsItsBeginning) {
  Layer root{{}};
  const auto shape = std::make_shared<overlay::ShapeLayer>(
      overlay::ShapeLayer::Lines{{{0, 0}, {30, 0}, {30, 10}}, {{0, 50}, {20, 50}}});
  root.add(shape);
  using Lines = overlay::ShapeLayer::Lines;
  for (const auto& [part, lines] : std::vector<std::pair<double, Lines>>{
           {0.25, {{{0, 0}, {15, 0}}}},
           {0.5, {{{0, 0}, {30, 0}}}},
           {0.75, {{{0, 0}, {30, 0}, {30, 10}}, {{0, 50}, {5, 50}}}},
           {1, {{{0, 0}, {30, 0}, {30, 10}}, {{0, 50}, {20, 50}}}}}) {
    shape->setValue(Property::strokeEnd, part);
    Lines drawn = std::get<platform::Stroke>(onlyShapeOf(root)).lines;
    // A line of no length ends the exact half.
    for (std::vector<platform::Point>& line : drawn) {
      line.erase(std::unique(line.begin(), line.end()), line.end());
    }
    EXPECT_EQ(drawn, lines) << part;
  }
  shape->setValue(Property::strokeEnd, 0);
  EXPECT_TRUE(root.displayList(0).empty());
}

TEST(GradientLayer, DrawsItsColours) {
  Layer root{{}};
  const auto gradient = std::make_shared<overlay::GradientLayer>(platform::Rect{{0, 0}, {10, 4}});
  gradient->stops = {{0, {1, 0, 0, 0}}, {1, {1, 0, 0, 1}}};
  root.add(gradient);
  EXPECT_EQ(std::get<platform::HorizontalGradient>(onlyShapeOf(root)),
            (platform::HorizontalGradient{{{0, 0}, {10, 4}}, gradient->stops}));
}

}  // namespace
}  // namespace tarnix::tests
