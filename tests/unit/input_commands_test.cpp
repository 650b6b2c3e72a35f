#include "probe/commands/input_commands.h"

#include "probe/commands/probe_command_handler.h"
#include "probe/model/input_result.h"
#include "probe/overlay/probe_touch_overlay.h"
#include "tests/fakes/fake_responder.h"
#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

class InputCommandsTest : public ServerTest {
 protected:
  InputCommandsTest() {
    startServer();
    companion_ = connectCompanion();
    companion_->written.clear();
    forgetLines();
    window_ = world_.application.addKeyWindow();
    view_->label = "Save";
    view_->touch = touch_;
    view_->parent = window_;
    window_->children = {view_};
    window_->atPoint = [this](platform::Point point) {
      askedAt_ = point;
      return view_;
    };
  }

  void handle(CompanionMessageType type, std::string payload) {
    ProbeCommandHandler::handle({type, std::move(payload), {}});
    world_.settle();
  }

  std::vector<CompanionMessage> answers() const { return messagesOf(companion_->written); }

  void expectOneAnswer(CompanionMessageType type, const InputResult& result) {
    const std::vector<CompanionMessage> messages = answers();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].type, type);
    EXPECT_EQ(messages[0].decode<InputResult>(), result);
    companion_->written.clear();
  }

  std::shared_ptr<fakes::FakeConnection> companion_;
  std::shared_ptr<fakes::FakeWindow> window_;
  fakes::Deeds deeds_;
  std::shared_ptr<fakes::FakeView> view_ = std::make_shared<fakes::FakeView>();
  std::shared_ptr<fakes::FakeResponder> touch_ = std::make_shared<fakes::FakeResponder>(deeds_);
  platform::Point askedAt_;
};

TEST_F(InputCommandsTest, ATapIsAnsweredWithWhatItDid) {
  touch_->control = true;
  handle(CompanionMessageType::commandTap, R"({"x":100,"y":200})");
  EXPECT_EQ(askedAt_, (platform::Point{100, 200}));
  expectOneAnswer(CompanionMessageType::responseTap, {true, "Tapped control: Save"});
}

TEST_F(InputCommandsTest, ATapThatFailsIsAnsweredToo) {
  handle(CompanionMessageType::commandTap, R"({"x":100,"y":200})");
  expectOneAnswer(CompanionMessageType::responseTap, {false, "No tappable element at (100,200)"});
  window_->key = false;
  handle(CompanionMessageType::commandTap, R"({"x":100,"y":200})");
  expectOneAnswer(CompanionMessageType::responseTap, {false, "No key window found"});
}

TEST_F(InputCommandsTest, TheDurationOfASwipeHasNoEffect) {
  touch_->scrolls = true;
  for (const char* payload : {R"({"x1":200,"y1":600,"x2":200,"y2":300})",
                              R"({"x1":200,"y1":600,"x2":200,"y2":300,"duration":2.5})",
                              R"({"x1":200,"y1":600,"x2":200,"y2":300,"duration":null})"}) {
    touch_->offset = {0, 0};
    handle(CompanionMessageType::commandSwipe, payload);
    EXPECT_EQ(touch_->offset, (platform::Point{0, 300}));
    expectOneAnswer(CompanionMessageType::responseSwipe, {true, "Scrolled by (0,300)"});
  }
}

TEST_F(InputCommandsTest, TextIsTypedIntoWhatHasTheFocus) {
  handle(CompanionMessageType::commandTypeText, R"({"text":"héllo"})");
  expectOneAnswer(CompanionMessageType::responseTypeText, {false, "No text field is focused"});
  touch_->focused = true;
  touch_->editsText = true;
  handle(CompanionMessageType::commandTypeText, R"({"text":"héllo"})");
  expectOneAnswer(CompanionMessageType::responseTypeText, {true, "Typed 5 characters"});
  EXPECT_EQ(deeds_, fakes::Deeds{"text héllo"});
}

TEST_F(InputCommandsTest, WhatIsDoneIsShownFirst) {
  touch_->control = true;
  std::string shownBefore;
  touch_->onTouch = [&] { shownBefore = standardError(); };
  handle(CompanionMessageType::commandTap, R"({"x":100,"y":200})");
  EXPECT_NE(shownBefore.find("[TarnixProbe] TouchOverlay: showTap at 100,200\n"), std::string::npos)
      << shownBefore;
  forgetLines();
  // Shown although nothing comes of it.
  handle(CompanionMessageType::commandSwipe, R"({"x1":1,"y1":2,"x2":3,"y2":4,"duration":2.5})");
  EXPECT_NE(standardError().find("[TarnixProbe] TouchOverlay: showSwipe 1,2 -> 3,4\n"),
            std::string::npos)
      << standardError();
}

TEST_F(InputCommandsTest, TypingIsShownAlsoWhereNothingHasTheFocus) {
  world_.overlaySurfaces.window.emplace();
  ProbeTouchOverlay::detail::overlayWindow();
  handle(CompanionMessageType::commandTypeText, R"({"text":"a"})");
  const auto& orb = ProbeTouchOverlay::detail::state().orb;
  ASSERT_NE(orb, nullptr);
  EXPECT_EQ(orb->textLabel().text, "typing");
  expectOneAnswer(CompanionMessageType::responseTypeText, {false, "No text field is focused"});
}

TEST_F(InputCommandsTest, WhatCannotBeUnderstoodHasNoAnswer) {
  touch_->control = touch_->scrolls = touch_->focused = touch_->editsText = true;
  for (const char* payload :
       {"", "{}", R"({"x":1})", R"({"y":1})", R"({"x":1,"y":null})", R"({"x":1.5,"y":2})",
        R"({"x":"1","y":"2"})", R"({"x":9223372036854775808,"y":0})"}) {
    handle(CompanionMessageType::commandTap, payload);
  }
  for (const char* payload : {"", "{}", R"({"x1":1,"y1":1,"x2":1})",
                              R"({"x1":1,"y1":1,"x2":1,"y2":1,"duration":"long"})"}) {
    handle(CompanionMessageType::commandSwipe, payload);
  }
  for (const char* payload : {"", "{}", R"({"text":null})", R"({"text":7})"}) {
    handle(CompanionMessageType::commandTypeText, payload);
  }
  EXPECT_TRUE(answers().empty());
  EXPECT_TRUE(deeds_.empty());
  EXPECT_EQ(standardError(), "");
}

TEST_F(InputCommandsTest, WhereItActsIsShownBeforeItActs) {
  world_.overlaySurfaces.window.emplace();
  ProbeTouchOverlay::detail::overlayWindow();
  forgetLines();
  touch_->control = true;
  std::string before;
  touch_->onTouch = [&] { before = standardError(); };
  handle(CompanionMessageType::commandTap, R"({"x":100,"y":200})");
  EXPECT_EQ(before, "[TarnixProbe] TouchOverlay: showTap at 100,200\n");
  forgetLines();
  handle(CompanionMessageType::commandSwipe, R"({"x1":1,"y1":2,"x2":3,"y2":4})");
  EXPECT_EQ(standardError(), "[TarnixProbe] TouchOverlay: showSwipe 1,2 -> 3,4\n");
}

TEST_F(InputCommandsTest, TypingIsShownAboveWhatHasTheFocusElseAtTheLowerEdge) {
  world_.overlaySurfaces.window.emplace();
  const auto place = [] {
    const overlay::Layer& badge =
        *ProbeTouchOverlay::detail::overlayWindow()->tree().sublayers().back();
    return platform::Point{badge.value(overlay::Property::positionX),
                           badge.value(overlay::Property::positionY)};
  };
  view_->whole = platform::Rect{{50, 100}, {60, 20}};
  handle(CompanionMessageType::commandTypeText, R"({"text":"a"})");
  EXPECT_EQ(place(), (platform::Point{200, 720}));
  touch_->focused = true;
  touch_->editsText = true;
  handle(CompanionMessageType::commandTypeText, R"({"text":"a"})");
  EXPECT_EQ(place(), (platform::Point{80, 80}));
}

// What the host does on a tap may run a loop until somebody closes it, as a dialog does.
TEST_F(InputCommandsTest, ALoopInsideTheHostsReactionDoesNotHoldTheAnswerBack) {
  touch_->control = true;
  touch_->onTouch = [this] {
    EXPECT_TRUE(answers().empty());
    world_.settle();
    expectOneAnswer(CompanionMessageType::responseTap, {true, "Tapped control: Save"});
  };
  handle(CompanionMessageType::commandTap, R"({"x":1,"y":2})");
  EXPECT_TRUE(answers().empty()) << "answered a second time";
}

}  // namespace
}  // namespace tarnix::tests
