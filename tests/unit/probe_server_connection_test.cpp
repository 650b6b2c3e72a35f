#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "probe/link/waiting_connections.h"
#include "probe/model/full_sync_payload.h"
#include "probe/platform/platform.h"
#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

using namespace std::chrono_literals;
using Types = std::vector<std::string>;
constexpr const char* lostLine = "[TarnixProbe] Connection lost\n";

class ProbeServerConnection : public ServerTest {
 protected:
  ProbeServerConnection() {
    startServer();
    forgetLines();
  }

  std::size_t lossCount() const {
    std::size_t count = 0;
    for (const std::string& line : fakes::FakeServices::shared().standardError) {
      count += line == lostLine ? 1U : 0U;
    }
    return count;
  }
};

TEST_F(ProbeServerConnection, IsStartedAndSaidToBeReceived) {
  const auto companion = world_.network.connect();
  world_.settle();
  EXPECT_TRUE(companion->isStarted);
  EXPECT_EQ(standardError(), "[TarnixProbe] New connection received\n");
}

TEST_F(ProbeServerConnection, GetsTheFullSyncFirstAndOnce) {
  const auto companion = connectCompanion();
  server_->send(message(CompanionMessageType::eventLog));
  world_.settle();
  EXPECT_EQ(typesSentTo(*companion), (Types{"sync.full", "event.log"}));
  EXPECT_EQ(standardError(),
            "[TarnixProbe] New connection received\n"
            "[TarnixProbe] Connection ready — sending full sync\n");
}

TEST_F(ProbeServerConnection, GetsASyncOfTheStoreStampedWithTheTime) {
  world_.clock.time += 90s;
  world_.bundle.info = {{"CFBundleName", "Demo"}};
  TransferableLogEntry entry;
  entry.message = "hello";
  ProbeState::shared().addLog(entry);
  const auto companion = connectCompanion();
  const std::vector<CompanionMessage> messages = messagesOf(companion->written);
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].timestamp.secondsSinceReference, 90);
  const auto sync = messages[0].decode<FullSyncPayload>();
  ASSERT_TRUE(sync);
  EXPECT_EQ(sync->appName, "Demo");
  ASSERT_EQ(sync->logEntries.size(), 1U);
  EXPECT_EQ(sync->logEntries[0].message, "hello");
}

TEST_F(ProbeServerConnection, GetsNothingBeforeItIsReady) {
  const auto companion = world_.network.connect();
  world_.settle();
  server_->send(message(CompanionMessageType::eventLog));
  world_.settle();
  EXPECT_EQ(companion->written, "");
}

TEST_F(ProbeServerConnection, NobodyGetsWhatIsSentWithoutACompanion) {
  server_->send(message(CompanionMessageType::eventLog));
  world_.settle();
  const auto companion = connectCompanion();
  EXPECT_EQ(typesSentTo(*companion), (Types{"sync.full"}));
}

TEST_F(ProbeServerConnection, GetsAnEmptyHeartbeatEveryFiveSeconds) {
  const auto companion = connectCompanion();
  world_.advance(4999ms);
  EXPECT_EQ(typesSentTo(*companion), (Types{"sync.full"}));
  world_.clock.time += 5s;
  world_.advance(1ms);
  const std::vector<CompanionMessage> messages = messagesOf(companion->written);
  ASSERT_EQ(messages.size(), 2U);
  EXPECT_EQ(messages[1].type, CompanionMessageType::heartbeat);
  EXPECT_EQ(messages[1].payload, "");
  EXPECT_EQ(messages[1].timestamp.secondsSinceReference, 5);
  world_.advance(10s);
  EXPECT_EQ(messagesOf(companion->written).size(), 4U);
}

TEST_F(ProbeServerConnection, GetsHeartbeatsOfOneTimerThoughItSaysTwiceThatItIsReady) {
  const auto companion = connectCompanion();
  companion->becomeReady();
  world_.settle();
  world_.advance(5s);
  EXPECT_EQ(typesSentTo(*companion), (Types{"sync.full", "sync.full", "heartbeat"}));
}

TEST_F(ProbeServerConnection, HasItsCommandsHandledOneByOneInOrder) {
  const auto companion = connectCompanion();
  companion->arrive(frameOf(message(CompanionMessageType::commandScreenHTML)) +
                    frameOf(message(CompanionMessageType::commandClearStore)) +
                    frameOf(message(CompanionMessageType::commandScreenHTML)));
  world_.settle();
  EXPECT_EQ(typesSentTo(*companion),
            (Types{"sync.full", "response.screenHTML", "response.screenHTML"}));
  EXPECT_TRUE(companion->hasOutstandingReceive());
}

TEST_F(ProbeServerConnection, MayBeCutAtEveryByte) {
  const auto companion = connectCompanion();
  for (const char byte : frameOf(message(CompanionMessageType::commandScreenHTML))) {
    companion->arrive(std::string_view(&byte, 1));
    world_.settle();
  }
  EXPECT_EQ(typesSentTo(*companion), (Types{"sync.full", "response.screenHTML"}));
}

TEST_F(ProbeServerConnection, SurvivesFramesThatHoldNoMessage) {
  const std::vector<std::string> bodies = {
      "no JSON",
      "{\"type\":",
      "[]",
      "null",
      std::string(100'000, '['),
      std::string("\xff\xfe\x00\x01", 4),
      R"({"type":"command.unknownThing","payload":"e30=","timestamp":0})",
      R"({"type":"command.clearStore","payload":"not base64!","timestamp":0})",
      R"({"type":"command.clearStore","payload":"e30","timestamp":0})",
      R"({"type":"command.clearStore","payload":{},"timestamp":0})",
      R"({"type":"command.clearStore","payload":"e30=","timestamp":"now"})",
      R"({"type":"command.clearStore","payload":"e30="})",
      R"({"payload":"e30=","timestamp":0})",
      R"({"type":7,"payload":"e30=","timestamp":0})",
  };
  const auto companion = connectCompanion();
  forgetLines();
  for (const std::string& body : bodies) {
    companion->arrive(frameOf(body));
    world_.settle();
    EXPECT_FALSE(companion->isCancelled) << body;
  }
  EXPECT_EQ(standardError(), "") << "a bad frame is not worth a line";
  sendCommand(*companion, CompanionMessageType::commandScreenHTML);
  EXPECT_EQ(typesSentTo(*companion), (Types{"sync.full", "response.screenHTML"}));
}

TEST_F(ProbeServerConnection, SkipsEmptyFrames) {
  const auto companion = connectCompanion();
  companion->arrive(std::string(12, '\0') +
                    frameOf(message(CompanionMessageType::commandScreenHTML)));
  world_.settle();
  EXPECT_EQ(typesSentTo(*companion), (Types{"sync.full", "response.screenHTML"}));
}

TEST_F(ProbeServerConnection, HasNoEffectByAHeartbeatOfItsOwn) {
  const auto companion = connectCompanion();
  sendCommand(*companion, CompanionMessageType::heartbeat, "");
  EXPECT_EQ(typesSentTo(*companion), (Types{"sync.full"}));
  EXPECT_TRUE(companion->hasOutstandingReceive());
}

TEST_F(ProbeServerConnection, WaitsForeverForAnAnnouncedBody) {
  const auto companion = connectCompanion();
  companion->arrive(
      "\xff\xff\xff\xff"
      "the beginning of four gigabytes");
  world_.advance(60s);
  EXPECT_FALSE(companion->isCancelled);
  const auto next = connectCompanion();
  companion->closeByPeer();
  EXPECT_TRUE(companion->isCancelled) << "a silent companion makes way for the next";
}

struct Loss {
  const char* name;
  void (*happens)(fakes::FakeConnection&);
};

std::string nameOf(const testing::TestParamInfo<Loss>& parameter) { return parameter.param.name; }

class ProbeServerLoss : public ProbeServerConnection, public testing::WithParamInterface<Loss> {};

TEST_P(ProbeServerLoss, EndsTheConnectionAndServesTheNext) {
  const auto companion = connectCompanion();
  forgetLines();
  GetParam().happens(*companion);
  world_.settle();
  EXPECT_TRUE(companion->isCancelled);
  EXPECT_GE(lossCount(), 1U);
  EXPECT_FALSE(companion->hasStateHandler());

  const std::string before = companion->written;
  world_.advance(20s);
  EXPECT_EQ(companion->written, before) << "no heartbeat after the loss";

  const auto next = connectCompanion();
  world_.advance(5s);
  EXPECT_EQ(typesSentTo(*next), (Types{"sync.full", "heartbeat"}));
  EXPECT_FALSE(next->isCancelled);
}

INSTANTIATE_TEST_SUITE_P(
    Ways, ProbeServerLoss,
    testing::Values(Loss{"PeerCloses", [](fakes::FakeConnection& c) { c.closeByPeer(); }},
                    Loss{"PeerClosesInMidFrame",
                         [](fakes::FakeConnection& c) {
                           c.arrive(std::string_view("\0\0\1\0{\"ty", 8));
                           c.closeByPeer();
                         }},
                    Loss{"NetworkBreaks", [](fakes::FakeConnection& c) { c.fail(); }},
                    Loss{"Cancelled", [](fakes::FakeConnection& c) { c.cancel(); }}),
    nameOf);

TEST_F(ProbeServerConnection, LogsEachRunOfTheLossProcedure) {
  const auto companion = connectCompanion();
  forgetLines();
  // The receive fails, and cancelling for that reason ends in the cancelled state.
  companion->closeByPeer();
  world_.settle();
  EXPECT_EQ(lossCount(), 2U);
}

TEST_F(ProbeServerConnection, IsDroppedForAMessageThatCannotBeEncoded) {
  const auto companion = connectCompanion();
  CompanionMessage broken = message(CompanionMessageType::eventLog);
  broken.timestamp.secondsSinceReference = std::numeric_limits<double>::infinity();
  server_->send(broken);
  world_.settle();
  EXPECT_TRUE(companion->isCancelled);
  EXPECT_EQ(typesSentTo(*companion), (Types{"sync.full"}));
}

TEST_F(ProbeServerConnection, ReplacedBeforeItWasReadyMakesWay) {
  const auto first = world_.network.connect();
  world_.settle();
  const auto second = world_.network.connect();
  world_.settle();
  EXPECT_TRUE(first->isCancelled);
  EXPECT_TRUE(second->isStarted);
}

TEST_F(ProbeServerConnection, WaitsInABoundedNumberForAMainThreadThatIsHeldUp) {
  std::vector<std::shared_ptr<fakes::FakeConnection>> crowd;
  constexpr std::size_t tooMany = WaitingConnections::capacity + 10;
  for (std::size_t index = 0; index < tooMany; ++index) {
    crowd.push_back(world_.network.connect());
  }
  world_.network.serialQueue.runReady();
  for (std::size_t index = 0; index < tooMany; ++index) {
    EXPECT_EQ(crowd[index]->isCancelled, index < 10) << index;
  }
  world_.settle();
  EXPECT_TRUE(crowd.back()->isStarted) << "the newest wins";
}

class FailingUserDefaults : public platform::UserDefaults {
 public:
  std::vector<std::pair<std::string, platform::PropertyValue>> dictionaryRepresentation()
      const override {
    throw std::bad_alloc();
  }
};

TEST_F(ProbeServerConnection, IsLetGoRatherThanServedByHalf) {
  FailingUserDefaults failing;
  const platform::Platform whole = platform::current();
  platform::Platform broken = whole;
  broken.userDefaults = &failing;
  platform::setCurrent(broken);
  const auto companion = connectCompanion();
  EXPECT_TRUE(companion->isCancelled);
  platform::setCurrent(whole);
  const auto again = connectCompanion();
  EXPECT_EQ(typesSentTo(*again), (Types{"sync.full"}));
}

TEST_F(ProbeServerConnection, EndsTogetherWithTheOneThatItReplaces) {
  const auto first = connectCompanion();
  const auto second = world_.network.connect();
  forgetLines();
  world_.settle();
  EXPECT_TRUE(first->isCancelled);
  EXPECT_TRUE(second->isCancelled) << "the end of the first arrives afterwards";
  // The first's receive and its cancelled state, then the second's cancelled state.
  EXPECT_EQ(lossCount(), 3U);

  const auto again = connectCompanion();
  world_.advance(5s);
  EXPECT_FALSE(again->isCancelled);
  EXPECT_EQ(typesSentTo(*again), (Types{"sync.full", "heartbeat"}));
}

TEST_F(ProbeServerConnection, GetsWhatIsSentBetweenReplacementAndLoss) {
  const auto first = connectCompanion();
  const auto second = world_.network.connect();
  world_.network.serialQueue.runReady();
  world_.mainQueue.runReady();
  server_->send(message(CompanionMessageType::eventLog));
  world_.settle();
  EXPECT_EQ(typesSentTo(*first), (Types{"sync.full"}));
  EXPECT_EQ(typesSentTo(*second), (Types{"event.log"}));
}

TEST_F(ProbeServerConnection, TenInATightLoopLeaveTheServerServing) {
  for (int round = 0; round < 10; ++round) {
    world_.network.connect()->becomeReady();
  }
  world_.settle();
  const auto companion = connectCompanion();
  sendCommand(*companion, CompanionMessageType::commandScreenHTML);
  const Types types = typesSentTo(*companion);
  EXPECT_EQ(types, (Types{"sync.full", "response.screenHTML"}));
}

TEST_F(ProbeServerConnection, ReceivesInOrderThoughTwoReceivesWereRequested) {
  const auto first = connectCompanion();
  // The first's command is on its way when the second takes over, so that both ask the second for
  // its next message.
  world_.network.connect();
  world_.network.serialQueue.runReady();
  first->arrive(frameOf(message(CompanionMessageType::commandToggleRule)));
  world_.settle();
  const auto companion = connectCompanion();
  sendCommand(*companion, CompanionMessageType::commandScreenHTML);
  EXPECT_EQ(typesSentTo(*companion), (Types{"sync.full", "response.screenHTML"}));
}

}  // namespace
}  // namespace tarnix::tests
