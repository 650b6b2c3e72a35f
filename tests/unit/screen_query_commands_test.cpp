#include "probe/commands/screen_query_commands.h"

#include "probe/commands/probe_command_handler.h"
#include "probe/model/accessibility_audit_response.h"
#include "probe/model/find_response.h"
#include "probe/model/screen_text_response.h"
#include "probe/model/screenshot_response.h"
#include "probe/model/snapshot_response.h"
#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

/// The line of what is shown over the host before the command works.
std::string effectOf(CompanionMessageType command) {
  return "[TarnixProbe] TouchOverlay: show" +
         std::string(command == CompanionMessageType::commandRequestScreenshot ? "CaptureFlash"
                     : command == CompanionMessageType::commandGetWebViewConsole
                         ? "DataPulse \u2014 webview console"
                         : "Scan") +
         "\n";
}

class ScreenQueryCommandsTest : public ServerTest {
 protected:
  ScreenQueryCommandsTest() {
    startServer();
    companion_ = connectCompanion();
    companion_->written.clear();
    forgetLines();
    ProbeScreenTracker::setLastScreenName("Cart");
  }

  /// What was sent on `command`.
  std::vector<CompanionMessage> answers(CompanionMessageType command, std::string payload) {
    companion_->written.clear();
    ProbeCommandHandler::handle({command, std::move(payload), {}});
    world_.settle();
    EXPECT_NE(standardError().find(effectOf(command)), std::string::npos) << standardError();
    forgetLines();
    return messagesOf(companion_->written);
  }

  /// The payload of the one answer, which is to be of type `response`.
  std::string answer(CompanionMessageType command, CompanionMessageType response,
                     std::string payload = "{}") {
    const std::vector<CompanionMessage> messages = answers(command, std::move(payload));
    EXPECT_EQ(messages.size(), 1U);
    if (messages.size() != 1) {
      return {};
    }
    EXPECT_EQ(messages[0].type, response);
    return messages[0].payload;
  }

  std::string find(std::string payload) {
    return answer(CompanionMessageType::commandFindElement,
                  CompanionMessageType::responseFindElement, std::move(payload));
  }

  std::shared_ptr<fakes::FakeView> add(std::string label,
                                       platform::Rect frame = {{0, 0}, {50, 50}}) {
    auto view = std::make_shared<fakes::FakeView>();
    view->isElement = true;
    view->label = std::move(label);
    view->frame = frame;
    window_->children.push_back(view);
    return view;
  }

  std::shared_ptr<fakes::FakeConnection> companion_;
  std::shared_ptr<fakes::FakeWindow> window_ = world_.application.addKeyWindow();
};

TEST_F(ScreenQueryCommandsTest, FindsAPartOfALabelUnlessAskedForAllOfIt) {
  add("Save draft");
  add("Save", {{0, 60}, {50, 50}});
  const auto labels = [&](const std::string& payload) {
    std::vector<std::string> result;
    const std::optional<FindResponse> response = decodeJson<FindResponse>(find(payload));
    for (const FoundElement& found : response.value().results) {
      result.push_back(found.label);
    }
    return result;
  };
  const std::vector<std::string> both = {"Save draft", "Save"};
  EXPECT_EQ(labels(R"({"text":"save"})"), both);
  EXPECT_EQ(labels(R"({"text":"save","exact":null})"), both);
  EXPECT_EQ(labels(R"({"text":"save","exact":false})"), both);
  EXPECT_EQ(labels(R"({"text":"sAVE","exact":true})"), std::vector<std::string>{"Save"});
  EXPECT_EQ(labels(R"({"text":""})"), both);
}

TEST_F(ScreenQueryCommandsTest, CutsOffFractionsTowardsZero) {
  add("Go", {{10.7, 20.2}, {100.9, 44.5}})->traits = platform::accessibility_traits::button;
  EXPECT_EQ(find(R"({"text":"Go"})"),
            R"({"screen":"Cart","query":"Go","results":[{"label":"Go","type":"Button","x":10,)"
            R"("y":20,"width":100,"height":44,"centerX":61,"centerY":42,"isButton":true}]})");
  add("Left", {{-0.5, -12.9}, {10, 10}});
  EXPECT_EQ(find(R"({"text":"Left"})"),
            R"({"screen":"Cart","query":"Left","results":[{"label":"Left","type":"Other","x":0,)"
            R"("y":-12,"width":10,"height":10,"centerX":4,"centerY":-7,"isButton":false}]})");
}

TEST_F(ScreenQueryCommandsTest, AnswersWithNoResultsAndTheQueryAsItCame) {
  EXPECT_EQ(find(R"({"text":"\"Ünter\" ","exact":true})"),
            R"({"screen":"Cart","query":"\"Ünter\" ","results":[]})");
}

TEST_F(ScreenQueryCommandsTest, DoesNotAnswerWhatIsNoSearch) {
  for (const char* payload : {"", "{}", "no JSON", R"({"exact":true})", R"({"text":1})",
                              R"({"text":null})", R"({"text":"a","exact":"yes"})"}) {
    EXPECT_TRUE(answers(CompanionMessageType::commandFindElement, payload).empty()) << payload;
  }
}

TEST_F(ScreenQueryCommandsTest, SaysTheVisibleText) {
  add("Volume")->value = "50%";
  add("Mute", {{0, 60}, {50, 50}})->value = "Mute";
  EXPECT_EQ(
      answer(CompanionMessageType::commandScreenText, CompanionMessageType::responseScreenText),
      R"({"screen":"Cart","lines":["Volume: 50%","Mute"]})");
}

TEST_F(ScreenQueryCommandsTest, ListsTheViewsAndLeavesOutWhatTheyHaveNot) {
  auto view = add("Go", {{10.7, 20.2}, {100.9, 44.5}});
  view->viewKind = platform::ViewKind::button;
  auto unlabelled = add("", {{0, 60}, {50, 50}});
  unlabelled->identifier = "cart";
  unlabelled->name = "Shop.CartView";
  EXPECT_EQ(
      answer(CompanionMessageType::commandRequestSnapshot, CompanionMessageType::responseSnapshot),
      R"({"screen":"Cart","elements":[)"
      R"({"label":"Go","type":"Button","x":10,"y":20,"width":100,"height":44,)"
      R"("interactive":false},)"
      R"({"identifier":"cart","type":"CartView","x":0,"y":60,"width":50,"height":50,)"
      R"("interactive":false}]})");
}

TEST_F(ScreenQueryCommandsTest, SendsThePicture) {
  window_->picture.emplace();
  EXPECT_EQ(answer(CompanionMessageType::commandRequestScreenshot,
                   CompanionMessageType::responseScreenshot, "no JSON"),
            R"({"screen":"Cart","base64PNG":"UE5H"})");
}

TEST_F(ScreenQueryCommandsTest, DoesNotAnswerWithoutAPicture) {
  EXPECT_TRUE(answers(CompanionMessageType::commandRequestScreenshot, "{}").empty());
  window_->picture.emplace();
  fakes::FakeServices::shared().png.clear();
  EXPECT_TRUE(answers(CompanionMessageType::commandRequestScreenshot, "{}").empty());
  fakes::FakeServices::shared().png = "PNG";
  window_->key = false;
  EXPECT_TRUE(answers(CompanionMessageType::commandRequestScreenshot, "{}").empty());
}

TEST_F(ScreenQueryCommandsTest, SaysWhatTheAuditFound) {
  const auto audit = [&] {
    return answer(CompanionMessageType::commandAccessibilityAudit,
                  CompanionMessageType::responseAccessibilityAudit);
  };
  EXPECT_EQ(audit(), R"({"screen":"Cart","issues":[],"issueCount":0})");
  add("Help", {{1.5, 2}, {20, 20}})->traits = platform::accessibility_traits::link;
  EXPECT_EQ(
      audit(),
      R"({"screen":"Cart","issues":[{"element":"Link \"Help\"",)"
      R"json("issue":"Touch target too small (20x20, minimum 44x44)","severity":"warning",)json"
      R"("x":1,"y":2,"width":20,"height":20}],"issueCount":1})");
}

TEST_F(ScreenQueryCommandsTest, AnswerWithEmptyListsWithoutAWindow) {
  world_.application.scenes.clear();
  EXPECT_EQ(find(R"({"text":""})"), R"({"screen":"Cart","query":"","results":[]})");
  EXPECT_EQ(
      answer(CompanionMessageType::commandScreenText, CompanionMessageType::responseScreenText),
      R"({"screen":"Cart","lines":[]})");
  EXPECT_EQ(
      answer(CompanionMessageType::commandRequestSnapshot, CompanionMessageType::responseSnapshot),
      R"({"screen":"Cart","elements":[]})");
}

}  // namespace
}  // namespace tarnix::tests
