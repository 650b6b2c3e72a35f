#include "probe/capture/probe_log_capture.h"

#include <string>
#include <vector>

#include "probe/capture/probelog.h"
#include "probe/model/full_sync_payload.h"
#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

using namespace std::chrono_literals;

class LogCapture : public ServerTest {
 protected:
  LogCapture() {
    ProbeLogCapture::detail::hasInstalled = false;
    fakes::FakeServices::shared().standardErrorObserver = nullptr;
    ProbeLogCapture::install();
  }
  ~LogCapture() override {
    write("\n");  // What a test left without a line feed ends here.
    probelogfd = platform::standardErrorDescriptor;
    world_.settle();
  }

  /// What the reader of the stream does with each piece.
  static void write(std::string_view piece) {
    fakes::FakeServices::shared().standardErrorObserver(piece);
  }

  static std::vector<std::string> storedMessages() {
    std::vector<std::string> messages;
    for (const TransferableLogEntry& entry : ProbeState::shared().logEntries()) {
      messages.push_back(entry.message);
    }
    return messages;
  }

  static std::vector<TransferableLogEntry> eventsSentTo(const fakes::FakeConnection& companion) {
    std::vector<TransferableLogEntry> entries;
    for (const CompanionMessage& message : messagesOf(companion.written)) {
      if (message.type == CompanionMessageType::eventLog) {
        entries.push_back(message.decode<TransferableLogEntry>().value());
      }
    }
    return entries;
  }
};

TEST_F(LogCapture, SaysThatItIsInstalledAtTheOriginalDestination) {
  EXPECT_EQ(standardError(), "[TarnixProbe] Log capture installed\n");
  EXPECT_EQ(fakes::FakeServices::shared().lastDescriptor, 10);
  EXPECT_EQ(probelogfd, 10);
}

TEST_F(LogCapture, InstallsOnce) {
  forgetLines();
  ProbeLogCapture::install();
  EXPECT_EQ(standardError(), "");
}

TEST_F(LogCapture, LeavesTheProbesLinesWhereTheyWentWhenTheStreamCannotBeDiverted) {
  ProbeLogCapture::detail::hasInstalled = false;
  probelogfd = platform::standardErrorDescriptor;
  forgetLines();
  fakes::FakeServices::shared().originalDescriptor.reset();
  ProbeLogCapture::install();
  EXPECT_EQ(standardError(), "");
  EXPECT_EQ(probelogfd, platform::standardErrorDescriptor);
}

TEST_F(LogCapture, MakesAnEntryOfALine) {
  world_.clock.time += 1500ms;
  ProbeState::shared().setScreen("Inbox");
  write("[warning] Net.HTTP: timeout\n");
  const std::vector<TransferableLogEntry> entries = ProbeState::shared().logEntries();
  ASSERT_EQ(entries.size(), 1U);
  TransferableLogEntry expected;
  expected.id = entries[0].id;
  expected.timestamp = {1.5};
  expected.level = "WARN";
  expected.category = "Net.HTTP";
  expected.message = "timeout";
  expected.file = "";
  expected.line = 0;
  expected.screenName = "Inbox";
  EXPECT_EQ(entries[0], expected);
  EXPECT_NE(entries[0].id, Uuid());
}

TEST_F(LogCapture, NamesTheScreenAlsoWhenItHasNoName) {
  ProbeState::shared().setScreen("");
  write("x\n");
  EXPECT_EQ(ProbeState::shared().logEntries().at(0).screenName, "");
}

TEST_F(LogCapture, SkipsEmptyLines) {
  write("a\n\nb\n");
  EXPECT_EQ(storedMessages(), (std::vector<std::string>{"a", "b"}));
}

TEST_F(LogCapture, KeepsACarriageReturnAsPartOfALineOfItsOwn) {
  write("\r\n");
  EXPECT_EQ(storedMessages(), std::vector<std::string>{"\r"});
}

TEST_F(LogCapture, WaitsForTheLineFeed) {
  write("[info] begin");
  EXPECT_EQ(storedMessages(), std::vector<std::string>{});
  write("ning \xE6\xBC");
  write("\xA2\n");
  EXPECT_EQ(storedMessages(), std::vector<std::string>{"beginning 漢"});
}

TEST_F(LogCapture, LeavesOutTheProbesOwnLines) {
  write("[TarnixProbe] Server started\nhost: [TarnixProbe] seen\nmine\n");
  EXPECT_EQ(storedMessages(), std::vector<std::string>{"mine"});
}

TEST_F(LogCapture, LeavesOutWhatIsNotText) {
  write("caf\xE9\nhalf \xE6\xBC\nwhole\n");
  EXPECT_EQ(storedMessages(), std::vector<std::string>{"whole"});
}

TEST_F(LogCapture, KeepsNulBytes) {
  write(std::string_view("a\0b\n", 4));
  EXPECT_EQ(storedMessages(), std::vector<std::string>{std::string("a\0b", 3)});
}

TEST_F(LogCapture, LetsGoOfALineThatDoesNotEnd) {
  write(std::string(65'537, 'x'));
  write("the end\nnext\n");
  EXPECT_EQ(storedMessages(), (std::vector<std::string>{"the end", "next"}));
}

TEST_F(LogCapture, StoresTheNewestOfManyLinesAtOnce) {
  std::string piece;
  for (int index = 0; index < 2'000; ++index) {
    piece += "line " + std::to_string(index) + "\n\n[TarnixProbe] between\n";
  }
  write(piece);
  const std::vector<std::string> messages = storedMessages();
  ASSERT_EQ(messages.size(), 500U);
  EXPECT_EQ(messages.front(), "line 1500");
  EXPECT_EQ(messages.back(), "line 1999");
}

TEST_F(LogCapture, SendsEachEntryInTheOrderOfTheLines) {
  startServer();
  const auto companion = connectCompanion();
  write("one\n[info] a: two\n");
  write("three\n");
  world_.settle();
  const std::vector<TransferableLogEntry> sent = eventsSentTo(*companion);
  EXPECT_EQ(sent, ProbeState::shared().logEntries());
  ASSERT_EQ(sent.size(), 3U);
  EXPECT_EQ(sent[1].message, "two");
}

TEST_F(LogCapture, SendsFromTheMainThread) {
  startServer();
  const auto companion = connectCompanion();
  write("one\n");
  EXPECT_TRUE(eventsSentTo(*companion).empty());
  EXPECT_EQ(storedMessages().size(), 1U);
  world_.settle();
  EXPECT_EQ(eventsSentTo(*companion).size(), 1U);
}

TEST_F(LogCapture, SendsWhatTheCompanionHasRoomFor) {
  startServer();
  const auto companion = connectCompanion();
  std::string piece;
  for (int index = 0; index < 1'000; ++index) {
    piece += "line " + std::to_string(index) + "\n";
  }
  write(piece);
  world_.settle();
  const std::vector<TransferableLogEntry> sent = eventsSentTo(*companion);
  ASSERT_GE(sent.size(), 63U);
  ASSERT_LE(sent.size(), 64U);
  for (std::size_t index = 0; index < sent.size(); ++index) {
    EXPECT_EQ(sent[index].message, "line " + std::to_string(index));
  }
  write("later\n");
  world_.settle();
  EXPECT_EQ(eventsSentTo(*companion).back().message, "later");
  EXPECT_EQ(storedMessages().size(), 500U);
}

TEST_F(LogCapture, SendsNothingOfTheTimeBeforeTheCompanion) {
  startServer();
  write("before\n");
  const auto companion = connectCompanion();
  write("after\n");
  world_.settle();
  const std::vector<TransferableLogEntry> sent = eventsSentTo(*companion);
  ASSERT_EQ(sent.size(), 1U);
  EXPECT_EQ(sent[0].message, "after");
  const auto sync =
      messagesOf(companion->written).at(0).decode<FullSyncPayload>().value().logEntries;
  ASSERT_EQ(sync.size(), 1U);
  EXPECT_EQ(sync[0].message, "before");
}

TEST_F(LogCapture, HoldsABoundedNumberOfEventsForABusyMainThread) {
  startServer();
  const auto companion = connectCompanion();
  for (int index = 0; index < 10'000; ++index) {
    write("line\n");
  }
  EXPECT_EQ(ProbeLogCapture::detail::waitingEvents, ProbeLogCapture::maxWaitingEvents);
  world_.settle();
  EXPECT_EQ(ProbeLogCapture::detail::waitingEvents, 0);
  EXPECT_GE(eventsSentTo(*companion).size(), 63U);
  write("later\n");
  world_.settle();
  EXPECT_EQ(eventsSentTo(*companion).back().message, "later");
}

}  // namespace
}  // namespace tarnix::tests
