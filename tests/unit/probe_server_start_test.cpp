#include <string>
#include <vector>

#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

using namespace std::chrono_literals;
using platform::ListenerState;

std::vector<std::string>& installed() {
  static std::vector<std::string> calls;
  return calls;
}

constexpr std::array<CaptureInstaller, 3> recordingInstallers = {{
    {"first", [](const std::string& identifier) { installed().push_back("first " + identifier); }},
    {"not built yet", nullptr},
    {"last", [](const std::string& identifier) { installed().push_back("last " + identifier); }},
}};

class ProbeServerStart : public ServerTest {
 protected:
  ProbeServerStart() { installed().clear(); }
};

TEST_F(ProbeServerStart, AsksForConnectionsThatAreProbedAfterFiveSilentSeconds) {
  startServer();
  EXPECT_TRUE(world_.network.lastParameters.enableKeepalive);
  EXPECT_EQ(world_.network.lastParameters.keepaliveIdle, 5s);
}

TEST_F(ProbeServerStart, AdvertisesTheServiceUnderTheDeviceName) {
  world_.device.deviceName = "Anna's desk";
  startServer();
  ASSERT_EQ(world_.network.listeners.size(), 1U);
  EXPECT_EQ(world_.network.listeners[0]->service->name, "Anna's desk");
  EXPECT_EQ(world_.network.listeners[0]->service->type, "_tarnix._tcp");
  EXPECT_TRUE(world_.network.listeners[0]->isStarted);
}

TEST_F(ProbeServerStart, SaysUnderWhichNameItListens) {
  startServer();
  EXPECT_EQ(standardError(),
            "[TarnixProbe] Bonjour listener started as \"Testbench\" on _tarnix._tcp\n");
}

TEST_F(ProbeServerStart, WritesItsLinesToStandardErrorOnly) {
  startServer();
  for (const std::string& line : fakes::FakeServices::shared().lines) {
    EXPECT_TRUE(line.starts_with("stderr: ")) << line;
  }
}

TEST_F(ProbeServerStart, LeavesAMarkerOfExactlyFiveBytes) {
  startServer();
  const std::map<std::string, std::string> expected = {{"/tmp/tarnprobe_ready", "ready"}};
  EXPECT_EQ(fakes::FakeServices::shared().files, expected);
}

TEST_F(ProbeServerStart, TwiceMakesOneListenerAndLogsOnce) {
  startServer();
  forgetLines();
  startServer();
  EXPECT_EQ(world_.network.listeners.size(), 1U);
  EXPECT_EQ(standardError(), "");
  EXPECT_TRUE(fakes::FakeServices::shared().files.empty());
}

TEST_F(ProbeServerStart, InstallsTheCapturesInTheirOrderForTheHost) {
  const auto server = std::make_shared<ProbeServer>(recordingInstallers);
  server->start();
  EXPECT_EQ(installed(),
            (std::vector<std::string>{"first org.example.demo", "last org.example.demo"}));
}

TEST_F(ProbeServerStart, InstallsForAHostWithoutIdentity) {
  world_.bundle.identifier.reset();
  const auto server = std::make_shared<ProbeServer>(recordingInstallers);
  server->start();
  EXPECT_EQ(installed(), (std::vector<std::string>{"first unknown", "last unknown"}));
}

TEST_F(ProbeServerStart, KnowsTheSixCapturesInTheirOrder) {
  std::vector<std::string_view> subsystems;
  for (const CaptureInstaller& installer : captureInstallers()) {
    subsystems.push_back(installer.subsystem);
  }
  EXPECT_EQ(subsystems, (std::vector<std::string_view>{
                            "network interceptor and session hook", "screen tracker", "log capture",
                            "performance monitor", "web-view console capture", "crash handler"}));
}

TEST_F(ProbeServerStart, WithoutAListenerSaysWhyAndInstallsNothing) {
  world_.network.refusal = "Address family not supported";
  const auto server = std::make_shared<ProbeServer>(recordingInstallers);
  server->start();
  world_.advance(10s);
  EXPECT_EQ(standardError(),
            "[TarnixProbe] Failed to create listener: Address family not supported\n");
  EXPECT_TRUE(installed().empty());
  EXPECT_TRUE(fakes::FakeServices::shared().files.empty());
}

TEST_F(ProbeServerStart, MayBeTriedAgainAfterAListenerCouldNotBeMade) {
  world_.network.refusal = "no";
  startServer();
  world_.network.refusal.reset();
  startServer();
  EXPECT_EQ(world_.network.listeners.size(), 1U);
}

TEST_F(ProbeServerStart, SaysWhenItListens) {
  startServer();
  forgetLines();
  world_.network.listenerBecomes(ListenerState::ready);
  world_.settle();
  EXPECT_EQ(standardError(), "[TarnixProbe] Listener ready\n");
}

TEST_F(ProbeServerStart, TakesNoNoticeOfACancelledListener) {
  startServer();
  forgetLines();
  world_.network.listenerBecomes(ListenerState::cancelled);
  world_.advance(10s);
  EXPECT_EQ(standardError(), "");
  EXPECT_EQ(world_.network.listeners.size(), 1U);
}

TEST_F(ProbeServerStart, RestartsAFailedListenerAfterTwoSeconds) {
  const auto server = std::make_shared<ProbeServer>(recordingInstallers);
  server->start();
  forgetLines();
  world_.network.listenerBecomes(ListenerState::failed);
  world_.settle();
  EXPECT_EQ(standardError(), "[TarnixProbe] Listener failed — restarting in 2s\n");
  EXPECT_TRUE(world_.network.listeners[0]->isCancelled);
  EXPECT_TRUE(world_.network.listeners[0]->isDestroyed);
  forgetLines();

  world_.advance(1999ms);
  EXPECT_EQ(world_.network.listeners.size(), 1U);
  world_.advance(1ms);
  ASSERT_EQ(world_.network.listeners.size(), 2U);
  EXPECT_TRUE(world_.network.listeners[1]->isStarted);
  EXPECT_EQ(standardError(),
            "[TarnixProbe] Bonjour listener started as \"Testbench\" on _tarnix._tcp\n");
  EXPECT_EQ(fakes::FakeServices::shared().files.at("/tmp/tarnprobe_ready"), "ready");
  EXPECT_EQ(fakes::FakeServices::shared().fileReaders.at("/tmp/tarnprobe_ready"),
            platform::FileReaders::everybody);
  EXPECT_EQ(installed().size(), 4U) << "the captures are installed at each start";
}

TEST_F(ProbeServerStart, KeepsItsCompanionWhenTheListenerFails) {
  startServer();
  const auto companion = connectCompanion();
  world_.network.listenerBecomes(ListenerState::failed);
  world_.advance(3s);
  EXPECT_FALSE(companion->isCancelled);
  EXPECT_EQ(world_.network.listeners.size(), 2U);
}

TEST_F(ProbeServerStart, GoesWithoutATraceWhileEventsAreOnTheirWay) {
  auto server = std::make_shared<ProbeServer>(std::span<const CaptureInstaller>());
  server->start();
  world_.network.listenerBecomes(ListenerState::failed);
  world_.network.connect();
  forgetLines();
  server.reset();
  world_.advance(10s);
  EXPECT_EQ(standardError(), "");
}

}  // namespace
}  // namespace tarnix::tests
