#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <string>
#include <thread>

#include "tests/integration/end_to_end/applications.h"
#include "tests/integration/end_to_end/screen_reading.h"
#include "tests/integration/harness/host_process.h"
#include "tests/integration/harness/raw_companion.h"

/// What a host makes of companions that send rubbish: it lives, and the next one is served.
namespace tarnix::integration {
namespace {

using Type = CompanionMessageType;
using namespace std::chrono_literals;
using namespace std::string_view_literals;

class BadInput : public testing::Test {
 protected:
  void SetUp() override { ASSERT_NE(host_.port(), 0); }
  void TearDown() override {
    EXPECT_TRUE(readScreen(host_.port()));
    EXPECT_TRUE(host_.isAlive());
  }

  HostProcess host_{qmlFile("geometry.qml").commandLine};
};

TEST_F(BadInput, CostsAPeerItsFrameAndNothingElse) {
  const std::string_view bodies[] = {
      "hello",
      R"({"type":)",
      "[]",
      "\xff\xfe\x80\xc0",
      R"({"type":"command.screenHTML","payload":"e30","timestamp":0})",
      R"({"type":"command.screenHTML","payload":"e3 =","timestamp":0})",
      R"({"type":"command.screenHTML","payload":{},"timestamp":0})",
      R"({"type":"command.screenHTML","timestamp":0})",
      R"({"type":"command.screenHTML","payload":"e30=","timestamp":"now"})",
      R"({"type":"command.screenHTML","payload":"e30=","timestamp":null})",
      R"({"type":"command.screenHTML","payload":"e30="})",
      R"({"type":"Command.screenHTML","payload":"e30=","timestamp":0})",
      R"({"type":"command.unknownThing","payload":"e30=","timestamp":0})",
      R"({"type":"response.screenHTML","payload":"e30=","timestamp":0})",
      R"({"type":"heartbeat","payload":"","timestamp":0})"};
  auto companion = RawCompanion::synced(host_.port());
  ASSERT_TRUE(companion);
  for (const std::string_view body : bodies) {
    ASSERT_TRUE(companion->sendBody(body));
    ASSERT_TRUE(companion->sendCommand(Type::commandScreenHTML));
    ASSERT_TRUE(companion->receive(Type::responseScreenHTML)) << body;
    // Had the first been taken for a command, there would be a second answer.
    EXPECT_FALSE(companion->receive(Type::responseScreenHTML, 50ms)) << body;
  }
}

TEST_F(BadInput, EmptyFramesArePassedOver) {
  auto companion = RawCompanion::synced(host_.port());
  ASSERT_TRUE(companion);
  for (const std::size_t count : {1U, 2U, 100'000U}) {
    ASSERT_TRUE(companion->send(std::string(count * CompanionFramer::headerSize, '\0')));
    ASSERT_TRUE(companion->sendCommand(Type::commandScreenHTML));
    ASSERT_TRUE(companion->receive(Type::responseScreenHTML)) << count;
  }
}

TEST_F(BadInput, DeeplyNestedJsonIsOnlyAFrame) {
  auto companion = RawCompanion::synced(host_.port());
  ASSERT_TRUE(companion);
  ASSERT_TRUE(companion->sendBody(std::string(1'000'000, '[')));
  ASSERT_TRUE(companion->sendCommand(Type::commandScreenHTML));
  EXPECT_TRUE(companion->receive(Type::responseScreenHTML));
}

TEST_F(BadInput, AHeaderInFourReadsIsAHeader) {
  auto companion = RawCompanion::synced(host_.port());
  ASSERT_TRUE(companion);
  const std::string frame =
      CompanionFramer::handleOutput(
          CompanionMessage{Type::commandScreenHTML, "{}", Timestamp{1}}.encodeEnvelope().value())
          .value();
  for (std::size_t index = 0; index < CompanionFramer::headerSize; ++index) {
    ASSERT_TRUE(companion->send(std::string_view(frame).substr(index, 1)));
    // Lets the host read what is there before the next byte is.
    std::this_thread::sleep_for(30ms);
  }
  ASSERT_TRUE(companion->send(std::string_view(frame).substr(CompanionFramer::headerSize)));
  EXPECT_TRUE(companion->receive(Type::responseScreenHTML));
}

TEST_F(BadInput, AnAnnouncementOfFourGigabytesTakesNoMemory) {
  auto companion = RawCompanion::synced(host_.port());
  ASSERT_TRUE(companion);
  const std::size_t before = host_.residentMemory();
  ASSERT_TRUE(companion->send("\xff\xff\xff\xff{\"type\":"));
  // The host has a heartbeat's time to do something about it.
  ASSERT_TRUE(companion->receive(Type::heartbeat));
  EXPECT_LT(host_.residentMemory(), before + 16 * 1024 * 1024);
}

TEST_F(BadInput, APeerMayCloseInMidFrame) {
  for (const std::string_view part : {"\0"sv, "\0\0\0"sv, "\0\0\1\0"sv, "\0\0\1\0{\"type\""sv}) {
    {
      auto companion = RawCompanion::synced(host_.port());
      ASSERT_TRUE(companion);
      ASSERT_TRUE(companion->send(part));
    }
    EXPECT_TRUE(readScreen(host_.port()));
  }
}

/// Sends the command as often over one connection, and reads nothing; false when the host closed
/// it.
bool sendWithoutReading(RawCompanion& companion, int commands) {
  for (int sent = 0; sent < commands; ++sent) {
    if (!companion.sendCommand(Type::commandScreenHTML)) {
      return false;
    }
  }
  return true;
}

TEST(BadPeer, ThatNeverReadsDoesNotFillTheHost) {
  HostProcess host(qmlFile("many_items.qml", {"400"}).commandLine);
  const std::uint16_t port = host.port();
  const auto sample = readScreen(port);
  ASSERT_TRUE(sample);
  ASSERT_TRUE(host.waitUntilIdle());
  const std::size_t before = host.peakMemory();
  constexpr std::size_t commands = 10'000;
  constexpr std::size_t megabyte = 1024 * 1024;
  ASSERT_GT(commands * sample->html.size(), 100 * megabyte) << "too little to tell";
  // The end of the companion before may end this one, too.
  constexpr int tries = 5;
  bool isHandled = false;
  for (int count = 0; count < tries && !isHandled; ++count) {
    RawCompanion companion = RawCompanion::withSmallBuffer(port);
    isHandled = sendWithoutReading(companion, commands) && host.waitUntilIdle() &&
                !companion.isClosedByHost();
  }
  EXPECT_TRUE(isHandled);
  const std::size_t growth = host.peakMemory() - before;
  RecordProperty("growthInKilobytes", std::to_string(growth / 1024));
  EXPECT_LT(growth, 32 * megabyte);
  EXPECT_TRUE(readScreen(port));
  EXPECT_TRUE(host.isAlive());
}

}  // namespace
}  // namespace tarnix::integration
