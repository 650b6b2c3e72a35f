#include <functional>
#include <map>

#include "tests/unit/fake_world.h"
#include "tests/unit/json_edit.h"
#include "tests/unit/marked_text.h"

namespace tarnix::tests {
namespace {

using namespace std::chrono_literals;

/// A fenced block of the document: its kind, its lines, and where it stands.
struct Block {
  std::string kind;
  std::vector<std::string> lines;
  std::size_t lineNumber = 0;
};

std::vector<Block> blocksOf(const std::string& path) {
  std::vector<Block> blocks;
  bool isInside = false;
  std::size_t lineNumber = 0;
  for (const std::string& line : linesOfFile(path)) {
    ++lineNumber;
    if (line.starts_with("```")) {
      isInside = !isInside;
      if (isInside) {
        blocks.push_back({line.substr(3), {}, lineNumber});
      }
    } else if (isInside) {
      blocks.back().lines.push_back(line);
    }
  }
  return blocks;
}

/// The world that the document describes, and what its blocks do in it.
class ProtocolTranscript : public ServerTest {
 protected:
  ProtocolTranscript() {
    world_.clock.time += 786'000'000s;
    world_.bundle.info = {{"CFBundleDisplayName", "Shop"},
                          {"CFBundleShortVersionString", "2.4.1"},
                          {"CFBundleVersion", "318"}};
    world_.userDefaults.values = {{"theme", {std::string("dark")}}};
    ProbeState::shared().addLog({.id = Uuid::parse("33333333-0000-4000-8000-0000000000AB").value(),
                                 .timestamp = {785'999'990.5},
                                 .level = "WARN",
                                 .category = "cart",
                                 .message = "slow reply",
                                 .file = "",
                                 .line = 0,
                                 .screenName = "Unknown"});
    auto text = element("Welcome", 10, platform::accessibility_traits::staticText);
    auto field = element("Name", 60, platform::accessibility_traits::none);
    field->textField = true;
    field->value = "Ada";
    auto button = element("Next >", 110, platform::accessibility_traits::button);
    world_.application.addKeyWindow()->children = {text, field, button};
  }

  static std::shared_ptr<fakes::FakeView> element(std::string label, double y,
                                                  platform::AccessibilityTraits traits) {
    auto view = std::make_shared<fakes::FakeView>();
    view->isElement = true;
    view->label = std::move(label);
    view->frame = {{0, y}, {320, 40}};
    view->traits = traits;
    return view;
  }

  void happens(const std::string& event) {
    const std::map<std::string, std::function<void()>> events = {
        {"the server starts",
         [this] {
           startServer();
           world_.network.listenerBecomes(platform::ListenerState::ready);
         }},
        {"a companion connects", [this] { companion_ = connectCompanion(); }},
        {"a second companion connects", [this] { world_.network.connect(); }},
        {"5 s pass",
         [this] {
           world_.clock.time += 5s;
           world_.advance(5s);
         }},
        {"the companion closes its end", [this] { companion_->closeByPeer(); }},
    };
    ASSERT_TRUE(events.contains(event)) << event;
    events.at(event)();
    world_.settle();
  }

  void expectStandardError(const Block& block) {
    std::string expected;
    for (const std::string& line : block.lines) {
      expected += line + "\n";
    }
    EXPECT_EQ(standardError(), expected);
    forgetLines();
  }

  void companionSends(const Block& block) {
    ASSERT_TRUE(companion_);
    const std::vector<std::string> body(block.lines.begin() + 1, block.lines.end());
    lastBody_ = joined(body);
    companion_->arrive(bytesOfHex(block.lines.at(0)) + lastBody_);
    world_.settle();
  }

  void expectFromProbe(const Block& block) {
    ASSERT_TRUE(companion_);
    const std::string header = bytesOfHex(block.lines.at(0));
    const std::vector<std::string> bodyLines(block.lines.begin() + 1, block.lines.end());
    lastBody_ = joined(bodyLines);
    EXPECT_EQ(CompanionFramer::handleOutput(lastBody_)->substr(0, 4), header);

    CompanionFramer framer;
    framer.handleInput(companion_->written);
    const std::optional<std::string> body = framer.nextBody();
    ASSERT_TRUE(body) << "the probe sent nothing";
    EXPECT_TRUE(sameJson(*body, lastBody_)) << *body;
    companion_->written.erase(0, CompanionFramer::headerSize + body->size());
  }

  void expectPayload(const Block& block) {
    const auto message = CompanionMessage::decodeEnvelope(lastBody_);
    ASSERT_TRUE(message);
    const std::string payload = joined(block.lines);
    EXPECT_TRUE(message->payload == payload || sameJson(message->payload, payload))
        << message->payload;
  }

  void play(const Block& block) {
    if (block.kind == "event") {
      happens(block.lines.at(0));
    } else if (block.kind == "standard-error") {
      expectStandardError(block);
    } else if (block.kind == "from-companion") {
      companionSends(block);
    } else if (block.kind == "from-probe") {
      expectFromProbe(block);
    } else if (block.kind == "payload") {
      expectPayload(block);
    } else {
      FAIL() << "unknown kind of block: " << block.kind;
    }
  }

  std::shared_ptr<fakes::FakeConnection> companion_;
  std::string lastBody_;
};

TEST_F(ProtocolTranscript, IsWhatTheCodeDoes) {
  const std::vector<Block> blocks = blocksOf(TARNIX_SOURCE_DIR "/docs/protocol.md");
  ASSERT_GT(blocks.size(), 20U);
  for (const Block& block : blocks) {
    SCOPED_TRACE("docs/protocol.md, line " + std::to_string(block.lineNumber));
    if (companion_ && block.kind != "from-probe" && block.kind != "payload" &&
        block.kind != "standard-error") {
      EXPECT_EQ(companion_->written, "") << "the probe sent more than the document says";
    }
    play(block);
    if (HasFatalFailure()) {
      return;
    }
  }
  EXPECT_EQ(companion_->written, "");
  EXPECT_EQ(standardError(), "");
}

TEST(ProtocolDocument, NamesEveryType) {
  std::vector<std::string> types;
  for (const std::string& line : linesOfFile(TARNIX_SOURCE_DIR "/docs/protocol.md")) {
    if (line.starts_with("| `") &&
        (line.find('.') != std::string::npos || line.starts_with("| `heartbeat`"))) {
      types.push_back(line.substr(3, line.find('`', 3) - 3));
    }
  }
  std::vector<std::string> expected;
  for (const CompanionMessageType type : allCompanionMessageTypes()) {
    expected.emplace_back(rawValue(type));
  }
  EXPECT_EQ(types, expected);
}

}  // namespace
}  // namespace tarnix::tests
