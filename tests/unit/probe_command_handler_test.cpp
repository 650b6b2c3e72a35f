#include "probe/commands/probe_command_handler.h"

#include "probe/link/json_codec.h"
#include "probe/model/screen_html_response.h"
#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

class ProbeCommandHandlerTest : public ServerTest {
 protected:
  ProbeCommandHandlerTest() {
    startServer();
    companion_ = connectCompanion();
    companion_->written.clear();
    forgetLines();
  }

  void handle(CompanionMessageType type, std::string payload) {
    ProbeCommandHandler::handle({type, std::move(payload), {}});
    world_.settle();
  }

  static void fillStore() {
    ProbeState::shared().addLog({});
    ProbeState::shared().addRequest({});
    ProbeState::shared().setScreen("Home");
  }
  static bool storeIsFull() {
    return ProbeState::shared().logEntries().size() == 1 &&
           ProbeState::shared().httpRequests().size() == 1 &&
           ProbeState::shared().currentScreen() == "Home";
  }

  std::shared_ptr<fakes::FakeConnection> companion_;
};

bool worksWhateverThePayload(CompanionMessageType type) {
  switch (type) {
    case CompanionMessageType::commandScreenText:
    case CompanionMessageType::commandRequestSnapshot:
    case CompanionMessageType::commandRequestScreenshot:
    case CompanionMessageType::commandScreenHTML:
    case CompanionMessageType::commandPerfSnapshot:
    case CompanionMessageType::commandAccessibilityAudit:
    case CompanionMessageType::commandGetWebViewConsole:
      return true;
    default:
      return false;
  }
}

const std::vector<std::string> oddPayloads = {"",     "{}",   "null",      "no JSON",
                                              "\xff", "[[[[", R"({"x":1})"};

TEST_F(ProbeCommandHandlerTest, HasNoEffectForAllButTheCommandsThatItHandles) {
  fillStore();
  for (const CompanionMessageType type : allCompanionMessageTypes()) {
    if (worksWhateverThePayload(type) || type == CompanionMessageType::commandFindElement ||
        type == CompanionMessageType::commandClearStore ||
        type == CompanionMessageType::commandShowOverlay ||
        type == CompanionMessageType::commandHideOverlay) {
      continue;
    }
    for (const std::string& payload : oddPayloads) {
      handle(type, payload);
    }
    EXPECT_TRUE(storeIsFull()) << rawValue(type);
    EXPECT_EQ(companion_->written, "") << rawValue(type);
    EXPECT_EQ(standardError(), "") << rawValue(type);
  }
}

TEST_F(ProbeCommandHandlerTest, ClearsTheStoreWhateverThePayload) {
  for (const std::string& payload : oddPayloads) {
    fillStore();
    handle(CompanionMessageType::commandClearStore, payload);
    EXPECT_TRUE(ProbeState::shared().logEntries().empty());
    EXPECT_TRUE(ProbeState::shared().httpRequests().empty());
    EXPECT_EQ(ProbeState::shared().currentScreen(), "Unknown");
  }
  EXPECT_EQ(companion_->written, "") << "no answer";
}

TEST_F(ProbeCommandHandlerTest, AnswersWithTheScreenAsText) {
  ProbeScreenTracker::setLastScreenName("A & B");
  auto button = std::make_shared<fakes::FakeView>();
  button->isElement = true;
  button->label = "Go <on>";
  button->frame = {{10, 20}, {30, 40}};
  button->traits = platform::accessibility_traits::button;
  world_.application.addKeyWindow()->children = {button};
  for (const std::string& payload : oddPayloads) {
    companion_->written.clear();
    handle(CompanionMessageType::commandScreenHTML, payload);
    const std::vector<CompanionMessage> messages = messagesOf(companion_->written);
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].type, CompanionMessageType::responseScreenHTML);
    EXPECT_EQ(messages[0].decode<ScreenHTMLResponse>(),
              (ScreenHTMLResponse{"A & B",
                                  "<html><title>A &amp; B</title>\n"
                                  "<button id=1 c=\"25,40\">Go &lt;on&gt;</button>\n</html>",
                                  1}));
  }
}

TEST_F(ProbeCommandHandlerTest, AnswersForAScreenWithNothingOnIt) {
  handle(CompanionMessageType::commandScreenHTML, "{}");
  const std::vector<CompanionMessage> messages = messagesOf(companion_->written);
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].payload,
            R"({"screen":"Unknown","html":"<html><title>Unknown</title>\n</html>",)"
            R"("elementCount":0})");
}

TEST_F(ProbeCommandHandlerTest, NamesTheScreenOnViewAlsoAfterTheStoreWasCleared) {
  ProbeScreenTracker::setLastScreenName("Home");
  handle(CompanionMessageType::commandClearStore, "");
  handle(CompanionMessageType::commandScreenHTML, "");
  EXPECT_EQ(messagesOf(companion_->written).at(0).decode<ScreenHTMLResponse>()->screen, "Home");
}

TEST_F(ProbeCommandHandlerTest, SendsNoAnswerThatHasNoJsonForm) {
  ProbeScreenTracker::setLastScreenName("\xff");
  handle(CompanionMessageType::commandScreenHTML, "");
  EXPECT_EQ(companion_->written, "");
  EXPECT_FALSE(companion_->isCancelled);
}

TEST_F(ProbeCommandHandlerTest, DropsTheAnswerWhileNobodyIsConnected) {
  companion_->fail();
  world_.settle();
  companion_->written.clear();
  handle(CompanionMessageType::commandScreenHTML, "");
  EXPECT_EQ(companion_->written, "");
}

}  // namespace
}  // namespace tarnix::tests
