#include "tests/contract/touch.h"

#include <gtest/gtest.h>

#include "tests/contract/fake_host_world.h"
#include "tests/contract/qt6_host_world.h"

/// What a touch reaches and does, and what keys do, in whatever toolkit.
namespace tarnix::contract {
namespace {

template <class World>
class TouchTest : public testing::Test {
 protected:
  void show(std::vector<Thing> things) { world.show({.size = size, .things = std::move(things)}); }

  /// The label of what reacts to a tap there; "-" when nothing does.
  std::string tap(platform::Point point) {
    const std::string said = tapAt(world.application(), point, [](const platform::View& view) {
      return view.accessibilityLabel();
    });
    world.letPass(std::chrono::milliseconds(1));
    return said;
  }

  std::shared_ptr<platform::View> touched(platform::Point point) {
    const auto window = keyWindowOf(world.application());
    return window == nullptr ? nullptr : window->hitTest(point);
  }

  static constexpr platform::Size size{400, 300};
  World world;
};

using Worlds = testing::Types<FakeHostWorld, WidgetsHostWorld, QuickHostWorld>;
TYPED_TEST_SUITE(TouchTest, Worlds);

constexpr platform::Rect place{{10, 20}, {100, 40}};
constexpr platform::Point inPlace{60, 40};

TYPED_TEST(TouchTest, AButtonIsClickedOnceByEachTap) {
  this->show({{.label = "Save", .frame = place}});
  EXPECT_EQ(this->tap(inPlace), "Save");
  EXPECT_EQ(this->world.clicks("Save"), 1);
  EXPECT_EQ(this->tap(inPlace), "Save");
  EXPECT_EQ(this->world.clicks("Save"), 2);
}

TYPED_TEST(TouchTest, WhatIsInFrontIsReached) {
  this->show({{.label = "Behind", .frame = place},
              {.label = "Front", .frame = {{60, 20}, {100, 40}}},
              {.label = "Hidden", .frame = place, .isHidden = true}});
  EXPECT_EQ(this->tap({85, 40}), "Front");
  EXPECT_EQ(this->tap({30, 40}), "Behind");
  EXPECT_EQ(this->world.clicks("Front"), 1);
  EXPECT_EQ(this->world.clicks("Behind"), 1);
  EXPECT_EQ(this->world.clicks("Hidden"), 0);
}

TYPED_TEST(TouchTest, AViewIsReachedWithinItsFrameAlone) {
  this->show({{.label = "Save", .frame = place}});
  for (const platform::Point inside : {platform::Point{11, 21}, {108, 21}, {11, 58}, {108, 58}}) {
    EXPECT_EQ(this->tap(inside), "Save") << inside.x << ',' << inside.y;
  }
  for (const platform::Point outside : {platform::Point{8, 40}, {112, 40}, {60, 18}, {60, 62}}) {
    EXPECT_EQ(this->tap(outside), "-") << outside.x << ',' << outside.y;
  }
  EXPECT_EQ(this->world.clicks("Save"), 4);
}

TYPED_TEST(TouchTest, WhatIsDisabledOrOnlyReadDoesNotReact) {
  this->show({{.label = "Off", .frame = place, .isDisabled = true},
              {.kind = Thing::Kind::label, .label = "Total", .frame = {{10, 100}, {100, 40}}}});
  EXPECT_EQ(this->tap(inPlace), "-");
  EXPECT_EQ(this->tap({60, 120}), "-");
  EXPECT_EQ(this->world.clicks("Off"), 0);
}

TYPED_TEST(TouchTest, TheGroundIsReachedAndNothingBesideTheWindow) {
  this->show({{.label = "Save", .frame = place}});
  EXPECT_NE(this->touched({200, 200}), nullptr);
  EXPECT_EQ(this->tap({200, 200}), "-");
  for (const platform::Point outside :
       {platform::Point{-5, 40}, {405, 40}, {60, -5}, {60, 305}, {1e18, -1e18}}) {
    EXPECT_EQ(this->touched(outside), nullptr) << outside.x << ',' << outside.y;
  }
}

TYPED_TEST(TouchTest, TheViewsAroundWhatIsTouchedEnd) {
  this->show({{.label = "Save", .frame = place}});
  auto view = this->touched(inPlace);
  ASSERT_NE(view, nullptr);
  int steps = 0;
  for (; view != nullptr && steps < 100; ++steps) {
    view = view->superview();
  }
  EXPECT_GE(steps, 2);
  EXPECT_LT(steps, 100);
}

TYPED_TEST(TouchTest, ATouchedFieldTakesWhatIsTyped) {
  this->show({{.label = "Save", .frame = {{10, 100}, {100, 40}}},
              {.kind = Thing::Kind::field, .label = "Name", .frame = place, .value = ""}});
  EXPECT_EQ(this->tap(inPlace), "Name");
  std::vector<std::shared_ptr<platform::View>> focused;
  for (const auto& view : viewsBelow(*keyWindowOf(this->world.application()))) {
    if (const auto responder = view->responder(); responder && responder->isFirstResponder()) {
      focused.push_back(view);
    }
  }
  ASSERT_EQ(focused.size(), 1);
  EXPECT_EQ(focused.front()->accessibilityLabel(), "Name");
  const auto responder = focused.front()->responder();
  platform::TextInput* const input = responder->asTextInput();
  ASSERT_NE(input, nullptr);
  input->insertText("Zoë 👩‍🚀");
  input->insertText("");
  const auto field = viewLabelled(this->world.application(), "Name");
  ASSERT_NE(field, nullptr);
  EXPECT_EQ(field->accessibilityValue(), "Zoë 👩‍🚀");
}

TYPED_TEST(TouchTest, ADisabledFieldTakesNothing) {
  this->show({{.kind = Thing::Kind::field, .label = "Name", .frame = place, .isDisabled = true}});
  EXPECT_EQ(this->tap(inPlace), "-");
  const auto field = viewLabelled(this->world.application(), "Name");
  ASSERT_NE(field, nullptr);
  const auto responder = field->responder();
  EXPECT_TRUE(responder == nullptr || responder->asTextInput() == nullptr);
}

TYPED_TEST(TouchTest, WhatScrollsGoesWhereItIsSent) {
  this->show(
      {{.kind = Thing::Kind::scroller, .frame = {{0, 0}, {200, 200}}},
       {.kind = Thing::Kind::scroller, .frame = {{200, 0}, {200, 200}}, .isDisabled = true}});
  const auto scrollerAt = [&](platform::Point point) {
    for (auto view = this->touched(point); view != nullptr; view = view->superview()) {
      if (const auto responder = view->responder(); responder && responder->asScrollView()) {
        return responder;
      }
    }
    return std::shared_ptr<platform::Responder>();
  };
  const auto responder = scrollerAt({100, 100});
  ASSERT_NE(responder, nullptr);
  EXPECT_EQ(responder->asScrollView()->contentOffset(), (platform::Point{0, 0}));
  responder->asScrollView()->setContentOffsetAnimated({120, 90});
  // Where it goes is where it is said to be, so that two swipes go twice as far.
  EXPECT_EQ(responder->asScrollView()->contentOffset(), (platform::Point{120, 90}));
  this->world.letPass(std::chrono::milliseconds(600));
  EXPECT_EQ(scrollerAt({100, 100})->asScrollView()->contentOffset(), (platform::Point{120, 90}));
  EXPECT_EQ(scrollerAt({300, 100}), nullptr);
}

TYPED_TEST(TouchTest, AViewThatHasGoneReactsToNothing) {
  this->show({{.label = "Save", .frame = place},
              {.kind = Thing::Kind::field, .label = "Name", .frame = {{10, 100}, {100, 40}}}});
  for (const platform::Point point : {inPlace, platform::Point{60, 120}}) {
    const auto view = this->touched(point);
    ASSERT_NE(view, nullptr);
    if (point.y > 100) {
      this->world.removeAll();
      const auto responder = view->responder();
      EXPECT_TRUE(responder == nullptr ||
                  (responder->asControl() == nullptr && responder->asTextInput() == nullptr &&
                   responder->asScrollView() == nullptr && !responder->isFirstResponder()));
    }
  }
  EXPECT_EQ(this->touched(inPlace), nullptr);
}

}  // namespace
}  // namespace tarnix::contract
