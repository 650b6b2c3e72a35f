#include "probe/platform/view.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/contract/fake_host_world.h"
#include "tests/contract/qt6_host_world.h"
#include "tests/contract/screen_walk.h"

namespace tarnix::contract {
namespace {

namespace traits = platform::accessibility_traits;

template <class World>
class ViewTest : public testing::Test {
 protected:
  std::shared_ptr<platform::View> view(const std::string& label) {
    return viewLabelled(world.application(), label);
  }

  World world;
};

using Worlds = testing::Types<FakeHostWorld, WidgetsHostWorld, QuickHostWorld>;
TYPED_TEST_SUITE(ViewTest, Worlds);

constexpr platform::Rect place{{10, 20}, {100, 40}};

TYPED_TEST(ViewTest, AButtonSaysItsTextAndWhereItStands) {
  this->world.show({.things = {{.label = "Save", .frame = place}}});
  const auto button = this->view("Save");
  ASSERT_NE(button, nullptr);
  EXPECT_TRUE(button->isAccessibilityElement());
  EXPECT_EQ(button->accessibilityFrame(), place);
  EXPECT_EQ(button->accessibilityTraits(), traits::button);
  EXPECT_FALSE(button->isTextField());
  EXPECT_FALSE(button->isHidden());
  EXPECT_DOUBLE_EQ(button->alpha(), 1);
}

TYPED_TEST(ViewTest, ALabelIsStaticText) {
  this->world.show({.things = {{.kind = Thing::Kind::label, .label = "Total", .frame = place}}});
  const auto label = this->view("Total");
  ASSERT_NE(label, nullptr);
  EXPECT_EQ(label->accessibilityTraits(), traits::staticText);
  EXPECT_EQ(label->accessibilityValue(), std::nullopt);
}

TYPED_TEST(ViewTest, AFieldSaysWhatItIsForAndWhatStandsInIt) {
  this->world.show({.things = {{.kind = Thing::Kind::field,
                                .label = "Name",
                                .frame = place,
                                .value = "Zoë 👩‍🚀"}}});
  const auto field = this->view("Name");
  ASSERT_NE(field, nullptr);
  EXPECT_TRUE(field->isAccessibilityElement());
  EXPECT_TRUE(field->isTextField());
  EXPECT_EQ(field->accessibilityValue(), "Zoë 👩‍🚀");
  EXPECT_EQ(field->accessibilityTraits(), traits::none);
}

TYPED_TEST(ViewTest, ADisabledThingSaysSo) {
  this->world.show({.things = {{.label = "Save", .frame = place, .isDisabled = true}}});
  const auto button = this->view("Save");
  ASSERT_NE(button, nullptr);
  EXPECT_EQ(button->accessibilityTraits(), traits::button | traits::notEnabled);
}

TYPED_TEST(ViewTest, WhatCannotBeSeenIsNoElement) {
  this->world.show({.things = {{.label = "Hidden", .frame = place, .isHidden = true},
                               {.label = "Clear", .frame = place, .opacity = 0}}});
  const auto window = keyWindowOf(this->world.application());
  ASSERT_NE(window, nullptr);
  int hidden = 0;
  int transparent = 0;
  for (const auto& view : viewsBelow(*window)) {
    EXPECT_FALSE(view->isAccessibilityElement() && !view->accessibilityLabel().empty());
    hidden += view->isHidden() ? 1 : 0;
    transparent += !view->isHidden() && view->alpha() < 0.01 ? 1 : 0;
  }
  EXPECT_GE(hidden, 1);
  EXPECT_EQ(transparent, 1);
}

TYPED_TEST(ViewTest, SubviewsComeBackToFront) {
  this->world.show({.things = {{.label = "Behind", .frame = place},
                               {.label = "Between", .frame = {{100, 20}, {100, 40}}},
                               {.label = "Front", .frame = {{190, 20}, {100, 40}}}}});
  std::vector<std::string> labels;
  for (const auto& view : viewsBelow(*keyWindowOf(this->world.application()))) {
    const std::string label = view->accessibilityLabel();
    if (view->isAccessibilityElement() && !label.empty()) {
      labels.push_back(label);
    }
  }
  EXPECT_EQ(labels, (std::vector<std::string>{"Behind", "Between", "Front"}));
}

TYPED_TEST(ViewTest, EveryViewAnswersWithFiniteFramesAndConsistentChildren) {
  this->world.show({.things = {{.label = "Save", .frame = place},
                               {.kind = Thing::Kind::field, .label = "Name", .frame = place}}});
  const auto window = keyWindowOf(this->world.application());
  ASSERT_NE(window, nullptr);
  for (const auto& view : viewsBelow(*window)) {
    const platform::Rect frame = view->accessibilityFrame();
    EXPECT_TRUE(std::isfinite(frame.minX()) && std::isfinite(frame.minY()) &&
                std::isfinite(frame.midX()) && std::isfinite(frame.midY()));
    EXPECT_EQ(view->asView(), view.get());
    EXPECT_FALSE(view->className().empty());
    const std::size_t count = view->accessibilityElementCount().value_or(0);
    for (std::size_t index = 0; index < count; ++index) {
      const auto child = view->accessibilityElement(index);
      EXPECT_TRUE(child == nullptr || child->asView() == nullptr);
    }
  }
}

TYPED_TEST(ViewTest, AViewThatHasGoneAnswersAsAnEmptyOne) {
  this->world.show({.things = {{.label = "Save", .frame = place}}});
  const auto button = this->view("Save");
  ASSERT_NE(button, nullptr);
  this->world.removeAll();
  EXPECT_FALSE(button->isAccessibilityElement() && !button->accessibilityLabel().empty());
  EXPECT_TRUE(button->subviews().empty());
  EXPECT_EQ(button->accessibilityFrame().size, (platform::Size{0, 0}));
}

}  // namespace
}  // namespace tarnix::contract
