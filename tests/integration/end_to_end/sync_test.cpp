#include <gtest/gtest.h>

#include <deque>
#include <vector>

#include "probe/model/full_sync_payload.h"
#include "tests/integration/end_to_end/applications.h"
#include "tests/integration/end_to_end/screen_reading.h"
#include "tests/integration/harness/host_process.h"
#include "tests/integration/harness/raw_companion.h"

namespace tarnix::integration {
namespace {

using Type = CompanionMessageType;
using namespace std::chrono_literals;

struct Sample {
  Application application;
  std::string appName;
};

// Found by GoogleTest when it names a test.
void PrintTo(const Sample& sample, std::ostream* stream) { *stream << sample.application.name; }

class SyncOfARealApplication : public testing::TestWithParam<Sample> {};

TEST_P(SyncOfARealApplication, ComesFirstAndDescribesTheHost) {
  HostProcess host(GetParam().application.commandLine);
  RawCompanion companion(host.port());
  const auto first = companion.receive();
  ASSERT_TRUE(first);
  ASSERT_EQ(first->type, Type::syncFull);
  const auto sync = first->decode<FullSyncPayload>();
  ASSERT_TRUE(sync) << first->payload;
  EXPECT_EQ(sync->appName, GetParam().appName);
  EXPECT_FALSE(sync->deviceName.empty());
  EXPECT_TRUE(sync->appVersion.ends_with(" (" + sync->qaState.buildNumber + ")"))
      << sync->appVersion;
  EXPECT_TRUE(sync->wsConnections.empty());
  EXPECT_TRUE(sync->keychainEntries.empty());
  EXPECT_TRUE(sync->environmentState.environments.empty());
  EXPECT_EQ(first->payload.find("recordedFlows"), std::string::npos);

  ASSERT_TRUE(companion.sendCommand(Type::commandScreenHTML));
  const auto answer = companion.receive(Type::responseScreenHTML);
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->decode<ScreenHTMLResponse>()->screen, sync->currentScreen);
}

TEST_P(SyncOfARealApplication, ComesOnceAConnection) {
  HostProcess host(GetParam().application.commandLine);
  for (int connection = 0; connection < 2; ++connection) {
    auto companion = RawCompanion::synced(host.port());
    ASSERT_TRUE(companion);
    // An answer to the last command means that everything before it has been sent.
    for (int command = 0; command < 3; ++command) {
      ASSERT_TRUE(companion->sendCommand(Type::commandScreenHTML));
      std::optional<CompanionMessage> message;
      do {
        message = companion->receive();
        ASSERT_TRUE(message);
        EXPECT_NE(message->type, Type::syncFull);
      } while (message->type != Type::responseScreenHTML);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Applications, SyncOfARealApplication,
                         testing::Values(Sample{pentobi(), "Pentobi"},
                                         Sample{focuswriter(), "FocusWriter"},
                                         Sample{qmlFile("geometry.qml"), "Qml Runtime"}),
                         [](const auto& sample) {
                           return sample.param.application.name.substr(
                               0, sample.param.application.name.find('.'));
                         });

TEST(Heartbeats, ComeEveryFiveSecondsAfterTheSync) {
  std::deque<HostProcess> hosts;
  std::vector<RawCompanion> companions;
  for (const Application& application : {pentobi(), focuswriter(), qmlFile("geometry.qml")}) {
    companions.emplace_back(hosts.emplace_back(application.commandLine).port());
  }
  for (RawCompanion& companion : companions) {
    const auto sync = companion.receive();
    ASSERT_TRUE(sync);
    ASSERT_EQ(sync->type, Type::syncFull);
    // The messages carry the time at which the host built them.
    double last = sync->timestamp.secondsSinceReference;
    for (int beat = 0; beat < 3; ++beat) {
      const auto message = companion.receive(Type::heartbeat, 30s);
      ASSERT_TRUE(message);
      EXPECT_EQ(message->payload, "");
      const double now = message->timestamp.secondsSinceReference;
      constexpr double interval = 5;
      // Generous upwards: a busy machine delays a main loop's timers.
      EXPECT_GT(now - last, interval - 0.5);
      EXPECT_LT(now - last, interval + 2);
      last = now;
    }
  }
}

}  // namespace
}  // namespace tarnix::integration
