#include "companion/client/companion_client.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "probe/link/json_value.h"
#include "tests/companion/memory_use.h"
#include "tests/companion/scripted_server.h"

namespace tarnix::companion {
namespace {

using namespace std::chrono_literals;
using Kind = ClientError::Kind;
using Type = CompanionMessageType;

// What a test that succeeds never comes near; the machine may be busy.
constexpr auto ample = 60s;
constexpr auto brief = 300ms;

const auto dropAtOnce = [](ScriptedPeer&) {};
const auto saySync = [](ScriptedPeer& peer) {
  peer.sendFullSync();
  peer.waitForEnd();
};
const auto beSilent = [](ScriptedPeer& peer) { peer.waitForEnd(); };

Outcome<CompanionClient> connectTo(const ScriptedServer& server,
                                   std::chrono::steady_clock::duration time = ample) {
  return CompanionClient::connect({"127.0.0.1", server.port()}, deadlineIn(time));
}

std::string appNameOf(const CompanionMessage& fullSync) {
  const auto document = JsonDocument::parse(fullSync.payload);
  return std::string(document->root().member("appName")->string().value());
}

bool says(const ClientError& error, std::string_view phrase) {
  return error.message.find(phrase) != std::string::npos;
}

TEST(CompanionClient, ReturnsWithTheFullSync) {
  ScriptedServer server({saySync});
  const auto client = connectTo(server);
  ASSERT_TRUE(client) << client.error().message;
  EXPECT_EQ(appNameOf(client->fullSync()), "Scripted");
}

TEST(CompanionClient, ConnectsAgainWhenDroppedAtOnce) {
  ScriptedServer server({dropAtOnce, dropAtOnce, saySync});
  const auto client = connectTo(server);
  ASSERT_TRUE(client) << client.error().message;
  EXPECT_EQ(server.connectionCount(), 3);
}

TEST(CompanionClient, ConnectsAgainWhenDroppedInsideTheFullSync) {
  const auto dropInside = [](ScriptedPeer& peer) {
    peer.sendBytes(std::string_view("\0\0\1\0{\"type\":", 12));
  };
  ScriptedServer server({dropInside, saySync});
  EXPECT_TRUE(connectTo(server));
  EXPECT_EQ(server.connectionCount(), 2);
}

TEST(CompanionClient, GivesUpWhenDroppedAgainAndAgain) {
  ScriptedServer server({dropAtOnce});
  const auto client = connectTo(server);
  ASSERT_FALSE(client);
  EXPECT_EQ(client.error().kind, Kind::dropped);
  EXPECT_TRUE(says(client.error(), "10 times")) << client.error().message;
  EXPECT_EQ(server.connectionCount(), CompanionClient::maximumTries);
}

TEST(CompanionClient, SaysThatNothingListens) {
  std::uint16_t port = 0;
  {
    const ScriptedServer server({dropAtOnce});
    port = server.port();
  }
  const auto client = CompanionClient::connect({"127.0.0.1", port}, deadlineIn(ample));
  ASSERT_FALSE(client);
  EXPECT_EQ(client.error().kind, Kind::unreachable);
  EXPECT_TRUE(says(client.error(), "tarnix list")) << client.error().message;
}

TEST(CompanionClient, BoundsTheWaitForTheFullSync) {
  ScriptedServer server({beSilent});
  const auto begin = std::chrono::steady_clock::now();
  const auto client = connectTo(server, brief);
  ASSERT_FALSE(client);
  EXPECT_EQ(client.error().kind, Kind::noAnswer);
  EXPECT_TRUE(says(client.error(), "main thread seems busy")) << client.error().message;
  EXPECT_GE(std::chrono::steady_clock::now() - begin, brief);
}

TEST(CompanionClient, ReadsAFrameThatArrivesByteByByte) {
  const auto drip = [](ScriptedPeer& peer) {
    const CompanionMessage message{Type::syncFull, fullSyncJson("Slow"), Timestamp{1}};
    peer.sendBytesOneByOne(*CompanionFramer::handleOutput(*message.encodeEnvelope()), 1ms);
    peer.waitForEnd();
  };
  ScriptedServer server({drip});
  const auto client = connectTo(server);
  ASSERT_TRUE(client) << client.error().message;
  EXPECT_EQ(appNameOf(client->fullSync()), "Slow");
}

TEST(CompanionClient, RefusesWhatIsNotAProbe) {
  const std::vector<std::pair<const char*, ScriptedServer::Script>> strangers = {
      {"no JSON", [](ScriptedPeer& peer) { peer.sendBody("certainly not JSON"); }},
      {"another JSON", [](ScriptedPeer& peer) { peer.sendBody(R"({"hello":"world"})"); }},
      {"an unknown type",
       [](ScriptedPeer& peer) {
         peer.sendBody(R"({"type":"sync.partial","payload":"e30=","timestamp":1})");
       }},
      {"another message first", [](ScriptedPeer& peer) { peer.send(Type::heartbeat, ""); }}};
  for (const auto& [name, script] : strangers) {
    ScriptedServer server({script});
    const auto client = connectTo(server);
    ASSERT_FALSE(client) << name;
    EXPECT_EQ(client.error().kind, Kind::notUnderstood) << name;
    EXPECT_EQ(server.connectionCount(), 1) << name;
  }
}

TEST(CompanionClient, AllocatesNothingForAnAnnouncedLength) {
  const auto announce = [](ScriptedPeer& peer) {
    peer.sendBytes("\xFF\xFF\xFF\xFF{");
    peer.waitForEnd();
  };
  ScriptedServer server({announce});
  const std::size_t before = peakMemory();
  const auto client = connectTo(server, brief);
  ASSERT_FALSE(client);
  EXPECT_EQ(client.error().kind, Kind::noAnswer);
  EXPECT_TRUE(says(client.error(), "was not whole in time")) << client.error().message;
  constexpr std::size_t smallGrowth = 64 * 1024 * 1024;
  EXPECT_LT(peakMemory() - before, smallGrowth);
}

TEST(CompanionClient, WaitsForTheAnswerAndHandsEventsToTheObserver) {
  const auto answer = [](ScriptedPeer& peer) {
    peer.sendFullSync();
    const auto command = peer.receive();
    peer.send(Type::heartbeat, "");
    peer.send(Type::eventLog, R"({"line":1})");
    peer.send(Type::responseTap, R"({"success":true})");
    peer.send(Type::responseScreenHTML, command->payload);
    peer.waitForEnd();
  };
  ScriptedServer server({answer});
  auto client = connectTo(server);
  ASSERT_TRUE(client);
  std::vector<Type> observed;
  client->setObserver([&](const CompanionMessage& message) { observed.push_back(message.type); });
  const auto response = client->request(makeCommand(Type::commandScreenHTML),
                                        Type::responseScreenHTML, deadlineIn(ample));
  ASSERT_TRUE(response) << response.error().message;
  EXPECT_EQ(response->payload, "{}");
  EXPECT_EQ(observed, (std::vector{Type::eventLog, Type::responseTap}));
}

TEST(CompanionClient, SaysThatTheMainThreadSeemsBusyWhenNoAnswerComes) {
  ScriptedServer server({saySync});
  auto client = connectTo(server);
  ASSERT_TRUE(client);
  const auto response = client->request(makeCommand(Type::commandScreenHTML),
                                        Type::responseScreenHTML, deadlineIn(brief));
  ASSERT_FALSE(response);
  EXPECT_EQ(response.error().kind, Kind::noAnswer);
  EXPECT_TRUE(says(response.error(), "main thread seems busy")) << response.error().message;
  EXPECT_TRUE(says(response.error(), "response.screenHTML")) << response.error().message;
}

TEST(CompanionClient, TellsAHostThatIsAliveFromOneThatIsBusy) {
  const auto beatOnly = [](ScriptedPeer& peer) {
    peer.sendFullSync();
    peer.receive();
    peer.send(Type::heartbeat, "");
    peer.waitForEnd();
  };
  ScriptedServer server({beatOnly});
  auto client = connectTo(server);
  ASSERT_TRUE(client);
  const auto response = client->request(makeCommand(Type::commandScreenHTML),
                                        Type::responseScreenHTML, deadlineIn(brief));
  ASSERT_FALSE(response);
  EXPECT_TRUE(says(response.error(), "is alive")) << response.error().message;
}

const auto dropAfterCommand = [](ScriptedPeer& peer) {
  peer.sendFullSync("First");
  peer.receive();
};
const auto answerHtml = [](ScriptedPeer& peer) {
  peer.sendFullSync("Second");
  if (peer.receive()) {
    peer.send(Type::responseScreenHTML, "{}");
  }
  peer.waitForEnd();
};

TEST(CompanionClient, AsksAgainWhenDroppedBeforeTheAnswer) {
  ScriptedServer server({dropAfterCommand, answerHtml});
  auto client = connectTo(server);
  ASSERT_TRUE(client);
  const auto response = client->request(makeCommand(Type::commandScreenHTML),
                                        Type::responseScreenHTML, deadlineIn(ample));
  ASSERT_TRUE(response) << response.error().message;
  EXPECT_EQ(appNameOf(client->fullSync()), "Second");
}

TEST(CompanionClient, DoesNotRepeatWhatMayHaveBeenDone) {
  ScriptedServer server({dropAfterCommand, answerHtml});
  auto client = connectTo(server);
  ASSERT_TRUE(client);
  const auto response = client->request(makeCommand(Type::commandTap), Type::responseTap,
                                        deadlineIn(ample), Repetition::forbidden);
  ASSERT_FALSE(response);
  EXPECT_EQ(response.error().kind, Kind::dropped);
  EXPECT_TRUE(says(response.error(), "may or may not")) << response.error().message;
  EXPECT_EQ(server.connectionCount(), 1);
}

TEST(CompanionClient, SaysThatTheHostHasGoneWhenItIs) {
  auto server = std::make_unique<ScriptedServer>(std::vector<ScriptedServer::Script>{saySync});
  auto client = connectTo(*server);
  ASSERT_TRUE(client);
  server.reset();
  const auto response = client->request(makeCommand(Type::commandScreenHTML),
                                        Type::responseScreenHTML, deadlineIn(ample));
  ASSERT_FALSE(response);
  EXPECT_EQ(response.error().kind, Kind::unreachable);
}

TEST(CompanionClient, TakesAnswersOfManyMegabytes) {
  constexpr std::size_t size = 48 * 1024 * 1024;
  const auto answerLarge = [](ScriptedPeer& peer) {
    peer.sendFullSync();
    peer.receive();
    peer.send(Type::responseScreenshot, std::string(size, 'x'));
    peer.waitForEnd();
  };
  ScriptedServer server({answerLarge});
  auto client = connectTo(server);
  ASSERT_TRUE(client);
  const auto response = client->request(makeCommand(Type::commandRequestScreenshot),
                                        Type::responseScreenshot, deadlineIn(ample));
  ASSERT_TRUE(response) << response.error().message;
  EXPECT_EQ(response->payload.size(), size);
}

TEST(CompanionClient, BoundsTheWaitForAHostThatReadsNothing) {
  const auto readNothing = [](ScriptedPeer& peer) {
    peer.sendFullSync();
    std::this_thread::sleep_for(2 * brief);
    peer.waitForEnd();
  };
  ScriptedServer server({readNothing});
  auto client = connectTo(server);
  ASSERT_TRUE(client);
  // More than both sockets hold.
  constexpr std::size_t size = 64 * 1024 * 1024;
  const Failure failure =
      client->send({Type::commandTypeText, std::string(size, 'x'), Timestamp{}}, deadlineIn(brief));
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->kind, Kind::noAnswer);
}

TEST(CompanionClient, GoesOnReadingAfterAWaitInVain) {
  const auto interrupted = [](ScriptedPeer& peer) {
    peer.sendFullSync();
    const CompanionMessage beat{Type::heartbeat, "", Timestamp{1}};
    const std::string frame = *CompanionFramer::handleOutput(*beat.encodeEnvelope());
    peer.sendBytes(std::string_view(frame).substr(0, 7));
    peer.receive();
    peer.sendBytes(std::string_view(frame).substr(7));
    peer.waitForEnd();
  };
  ScriptedServer server({interrupted});
  auto client = connectTo(server);
  ASSERT_TRUE(client);
  const auto nothing = client->receive(deadlineIn(brief));
  ASSERT_FALSE(nothing);
  EXPECT_EQ(nothing.error().kind, Kind::noAnswer);
  ASSERT_FALSE(client->send(makeCommand(Type::commandTap), deadlineIn(ample)));
  const auto beat = client->receive(deadlineIn(ample));
  ASSERT_TRUE(beat) << beat.error().message;
  EXPECT_EQ(beat->type, Type::heartbeat);
}

}  // namespace
}  // namespace tarnix::companion
