#include "probe/inspect/probe_input_synthesizer.h"

#include <limits>

#include "tests/fakes/fake_responder.h"
#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

using fakes::Deeds;
using fakes::FakeRecognizer;
using fakes::FakeResponder;
using fakes::FakeView;
using ProbeInputSynthesizer::findFirstResponder;
using ProbeInputSynthesizer::swipe;
using ProbeInputSynthesizer::tap;
using ProbeInputSynthesizer::typeText;

InputResult success(std::string message) { return {true, std::move(message)}; }
InputResult failure(std::string message) { return {false, std::move(message)}; }

class ProbeInputSynthesizerTest : public FakeWorldTest {
 protected:
  struct Part {
    std::shared_ptr<FakeView> view;
    std::shared_ptr<FakeResponder> touch;
  };

  /// A view inside `parent` that reacts to nothing yet.
  Part add(const std::string& label, const std::shared_ptr<FakeView>& parent = nullptr) {
    Part part{std::make_shared<FakeView>(), std::make_shared<FakeResponder>(deeds_)};
    part.view->label = label;
    part.view->touch = part.touch;
    if (parent) {
      part.view->parent = parent;
      parent->children.push_back(part.view);
    } else {
      part.view->parent = window_;
      window_->children.push_back(part.view);
    }
    return part;
  }

  void hitAnywhere(const std::shared_ptr<FakeView>& view) {
    window_->atPoint = [view](platform::Point) { return view; };
  }

  std::shared_ptr<FakeRecognizer> recognizer(const std::string& name, bool isTap) {
    return std::make_shared<FakeRecognizer>(name, isTap, deeds_);
  }

  std::shared_ptr<fakes::FakeWindow> window_ = world_.application.addKeyWindow();
  Deeds deeds_;
};

TEST_F(ProbeInputSynthesizerTest, SaysSoWithoutAKeyWindow) {
  window_->key = false;
  hitAnywhere(add("Save").view);
  EXPECT_EQ(tap(1, 2), failure("No key window found"));
  EXPECT_EQ(swipe(1, 2, 3, 4), failure("No key window found"));
  EXPECT_EQ(typeText("a"), failure("No key window found"));
  world_.application.scenes.clear();
  EXPECT_EQ(tap(1, 2), failure("No key window found"));
  EXPECT_TRUE(deeds_.empty());
}

TEST_F(ProbeInputSynthesizerTest, ActsOnTheFirstKeyWindowOfAllScenes) {
  const auto second = world_.application.addKeyWindow();
  EXPECT_EQ(ProbeInputSynthesizer::appWindow(), window_);
  window_->key = false;
  EXPECT_EQ(ProbeInputSynthesizer::appWindow(), second);
}

TEST_F(ProbeInputSynthesizerTest, ATapThatMeetsNothingNamesThePoint) {
  EXPECT_EQ(tap(10, 20), failure("No view at (10,20)"));
  EXPECT_EQ(tap(-1, std::numeric_limits<std::int64_t>::min()),
            failure("No view at (-1,-9223372036854775808)"));
}

TEST_F(ProbeInputSynthesizerTest, AsksForTheViewAtThePoint) {
  platform::Point asked;
  window_->atPoint = [&](platform::Point point) {
    asked = point;
    return nullptr;
  };
  tap(10, -20);
  EXPECT_EQ(asked, (platform::Point{10, -20}));
  swipe(30, 40, 50, 60);
  EXPECT_EQ(asked, (platform::Point{30, 40}));
}

TEST_F(ProbeInputSynthesizerTest, ATapActivatesFirst) {
  const Part button = add("Save");
  button.touch->activates = true;
  button.touch->control = true;
  hitAnywhere(button.view);
  EXPECT_EQ(tap(1, 1), success("Tapped via accessibility: Save"));
  EXPECT_EQ(deeds_, Deeds{"activate"});
}

TEST_F(ProbeInputSynthesizerTest, ATapOnAControlThatDoesNotActivatePressesIt) {
  const Part button = add("Save");
  button.touch->control = true;
  hitAnywhere(button.view);
  EXPECT_EQ(tap(1, 1), success("Tapped control: Save"));
  EXPECT_EQ(deeds_, (Deeds{"activate", "touch up inside"}));
}

TEST_F(ProbeInputSynthesizerTest, NamesAViewWithoutLabelByItsClass) {
  const Part button = add("");
  button.touch->control = true;
  button.view->name = "Shop.FancyView";
  hitAnywhere(button.view);
  EXPECT_EQ(tap(1, 1), success("Tapped control: Shop.FancyView"));
  button.view->hasEmptyLabel = true;
  EXPECT_EQ(tap(1, 1), success("Tapped control: ")) << "an empty label is a label";
}

TEST_F(ProbeInputSynthesizerTest, ATapOnALabelInAButtonPressesTheButton) {
  const Part button = add("Save");
  button.touch->control = true;
  const Part label = add("Text", button.view);
  hitAnywhere(label.view);
  EXPECT_EQ(tap(1, 1), success("Tapped control: Save"));
  EXPECT_EQ(deeds_, (Deeds{"activate", "touch up inside"})) << "only what was hit is activated";
}

TEST_F(ProbeInputSynthesizerTest, AControlComesBeforeItsRecognizers) {
  const Part button = add("Save");
  button.touch->control = true;
  button.touch->recognizers = {recognizer("tap", true)};
  hitAnywhere(button.view);
  EXPECT_EQ(tap(1, 1), success("Tapped control: Save"));
  EXPECT_EQ(deeds_.back(), "touch up inside");
}

TEST_F(ProbeInputSynthesizerTest, ATapPassesOverRecognizersOfOtherKinds) {
  const Part outer = add("Outer");
  outer.touch->recognizers = {recognizer("pan", false), recognizer("first tap", true),
                              recognizer("second tap", true)};
  const Part inner = add("Inner", outer.view);
  inner.touch->recognizers = {recognizer("long press", false)};
  hitAnywhere(inner.view);
  EXPECT_EQ(tap(1, 1), success("Triggered tap gesture on: Outer"));
  EXPECT_EQ(deeds_, (Deeds{"activate", "ended first tap"}));
}

TEST_F(ProbeInputSynthesizerTest, ATapOnWhatReactsToNothingSaysSo) {
  const Part text = add("Text");
  hitAnywhere(text.view);
  EXPECT_EQ(tap(7, 8), failure("No tappable element at (7,8)"));
  text.view->touch = nullptr;
  EXPECT_EQ(tap(7, 8), failure("No tappable element at (7,8)")) << "a view that has gone";
}

TEST_F(ProbeInputSynthesizerTest, SurvivesViewsThatContainEachOther) {
  const Part text = add("Text");
  text.view->parent = text.view;
  hitAnywhere(text.view);
  EXPECT_EQ(tap(7, 8), failure("No tappable element at (7,8)"));
  text.view->children = {text.view};
  EXPECT_EQ(typeText("a"), failure("No text field is focused"));
  text.view->children.clear();
}

TEST_F(ProbeInputSynthesizerTest, TellsTheOutcomeBeforeTheHostReacts) {
  const Part button = add("Save");
  button.touch->control = true;
  hitAnywhere(button.view);
  tap(1, 1, [&](const InputResult& result) { deeds_.push_back(result.message); });
  EXPECT_EQ(deeds_, (Deeds{"activate", "Tapped control: Save", "touch up inside"}));
}

TEST_F(ProbeInputSynthesizerTest, ASwipeScrollsTheNearestScrollViewAroundItsStart) {
  const Part outer = add("Outer");
  outer.touch->scrolls = true;
  const Part inner = add("Inner", outer.view);
  inner.touch->scrolls = true;
  inner.touch->offset = {5, 10};
  const Part row = add("Row", inner.view);
  hitAnywhere(row.view);
  EXPECT_EQ(swipe(200, 600, 200, 300), success("Scrolled by (0,300)"));
  EXPECT_EQ(inner.touch->offset, (platform::Point{5, 310}));
  EXPECT_EQ(outer.touch->offset, (platform::Point{0, 0}));
  EXPECT_EQ(swipe(0, 0, 40, 50), success("Scrolled by (-40,-50)"));
  EXPECT_EQ(inner.touch->offset, (platform::Point{-35, 260})) << "also past the content's start";
}

TEST_F(ProbeInputSynthesizerTest, ASwipeOnAScrollViewItselfScrollsIt) {
  const Part list = add("List");
  list.touch->scrolls = true;
  hitAnywhere(list.view);
  EXPECT_EQ(swipe(1, 2, 3, 4, 2.5), success("Scrolled by (-2,-2)"));
}

TEST_F(ProbeInputSynthesizerTest, ASwipeOverNothingThatScrollsSaysSo) {
  EXPECT_EQ(swipe(1, 2, 3, 4), failure("No scrollable view found at (1,2)"));
  hitAnywhere(add("Text").view);
  EXPECT_EQ(swipe(1, 2, 3, 4), failure("No scrollable view found at (1,2)"));
}

TEST_F(ProbeInputSynthesizerTest, ASwipeBeyondAllNumbersStopsAtTheirEnd) {
  const Part list = add("List");
  list.touch->scrolls = true;
  hitAnywhere(list.view);
  constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
  constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(swipe(least, most, most, least),
            success("Scrolled by (-9223372036854775808,9223372036854775807)"));
}

TEST_F(ProbeInputSynthesizerTest, TypesTheWholeTextAtOnceIntoAField) {
  const Part field = add("Name");
  field.touch->focused = true;
  field.touch->editsText = true;
  field.touch->takesKeys = true;
  EXPECT_EQ(typeText("héllo"), success("Typed 5 characters"));
  EXPECT_EQ(typeText(""), success("Typed 0 characters"));
  EXPECT_EQ(typeText("a👩‍🚀e\u0301"), success("Typed 3 characters"));
  EXPECT_EQ(deeds_, (Deeds{"text héllo", "text ", "text a👩‍🚀e\u0301"}));
}

TEST_F(ProbeInputSynthesizerTest, TypesCharacterByCharacterIntoWhatTakesKeysOnly) {
  const Part game = add("Game");
  game.touch->focused = true;
  game.touch->takesKeys = true;
  EXPECT_EQ(typeText("a👩‍🚀e\u0301"), success("Typed 3 characters via UIKeyInput"));
  EXPECT_EQ(deeds_, (Deeds{"key a", "key 👩‍🚀", "key e\u0301"}));
  EXPECT_EQ(typeText(""), success("Typed 0 characters via UIKeyInput"));
}

TEST_F(ProbeInputSynthesizerTest, SaysWhyNothingIsTyped) {
  const Part button = add("Save");
  EXPECT_EQ(typeText("a"), failure("No text field is focused"));
  button.touch->focused = true;
  EXPECT_EQ(typeText("a"), failure("First responder doesn't accept text input"));
  EXPECT_TRUE(deeds_.empty());
}

TEST_F(ProbeInputSynthesizerTest, FindsTheFocusDepthFirst) {
  const Part left = add("Left");
  const Part inLeft = add("In left", left.view);
  const Part right = add("Right");
  right.touch->focused = true;
  inLeft.touch->focused = true;
  EXPECT_EQ(findFirstResponder(window_), inLeft.view);
  left.touch->focused = true;
  EXPECT_EQ(findFirstResponder(window_), left.view);
  EXPECT_EQ(findFirstResponder(right.view), right.view) << "a view may be its own";
  EXPECT_EQ(findFirstResponder(nullptr), nullptr);
}

}  // namespace
}  // namespace tarnix::tests
