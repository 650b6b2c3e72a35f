#include "probe/bootstrap/bootstrap.h"

#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;
constexpr const char* launched = "UIApplicationDidFinishLaunchingNotification";

class Bootstrap : public ServerTest {
 protected:
  Bootstrap() { detail::tarnixprobe_loaded = false; }
  ~Bootstrap() override { detail::tarnixprobe_loaded = false; }

  /// Everything since the last call, in the order in which it was written.
  static Lines takeLines() {
    Lines lines = fakes::FakeServices::shared().lines;
    fakes::FakeServices::shared().reset();
    return lines;
  }
};

const Lines linesOfTheFirstRun = {
    "stderr: [TarnixProbe] Bootstrap fired (C constructor)\n",
    "system log: [TarnixProbe] Bootstrap fired (C constructor)",
    "stderr: [TarnixProbe] About to call Swift bootstrap (sync from +load)\n",
    "system log: [TarnixProbe] About to call Swift bootstrap (sync from +load)",
    "stderr: [TarnixProbe] Swift entry reached\n",
    "system log: [TarnixProbe] Swift entry reached",
    "stderr: [TarnixProbe] Injected into org.example.demo\n",
    "system log: [TarnixProbe] Injected into org.example.demo",
    "stderr: [TarnixProbe] Swift bootstrap returned (sync from +load).\n",
    "system log: [TarnixProbe] Swift bootstrap returned (sync from +load).",
};

const Lines linesOfAServerStart = {
    "stderr: [TarnixProbe] Bonjour listener started as \"Testbench\" on _tarnix._tcp\n",
    "stderr: [TarnixProbe] Server started for org.example.demo\n",
    "system log: [TarnixProbe] Server started for org.example.demo",
};

TEST_F(Bootstrap, WritesEachStepToStandardErrorAndTheSystemLog) {
  tarnixprobe_bootstrap("C constructor");
  EXPECT_EQ(takeLines(), linesOfTheFirstRun);
}

TEST_F(Bootstrap, StartsTheServerHalfASecondLater) {
  tarnixprobe_bootstrap("C constructor");
  takeLines();
  world_.advance(499ms);
  EXPECT_EQ(takeLines(), Lines{});
  EXPECT_TRUE(world_.network.listeners.empty());
  world_.advance(1ms);
  EXPECT_EQ(takeLines(), linesOfAServerStart);
  EXPECT_EQ(world_.network.listeners.size(), 1U);
}

TEST_F(Bootstrap, DoesTheWorkOnceWhicheverWayComesFirst) {
  tarnixprobe_bootstrap("ObjC +load");
  Lines lines = takeLines();
  ASSERT_EQ(lines.size(), linesOfTheFirstRun.size());
  EXPECT_EQ(lines[0], "stderr: [TarnixProbe] Bootstrap fired (ObjC +load)\n");
  EXPECT_EQ(lines[2], "stderr: [TarnixProbe] About to call Swift bootstrap (sync from +load)\n");
  tarnixprobe_bootstrap("C constructor");
  EXPECT_EQ(takeLines(), Lines{});
  EXPECT_EQ(world_.notificationCenter.observers.size(), 1U);
}

TEST_F(Bootstrap, RunsASecondTimeAtLaunchWithOneListenerInTheEnd) {
  tarnixprobe_bootstrap("C constructor");
  takeLines();
  world_.notificationCenter.post(launched);
  world_.settle();
  EXPECT_EQ(takeLines(),
            (Lines{
                "stderr: [TarnixProbe] About to call Swift bootstrap (UIApplication launch)\n",
                "system log: [TarnixProbe] About to call Swift bootstrap (UIApplication launch)",
                "stderr: [TarnixProbe] Swift entry reached\n",
                "system log: [TarnixProbe] Swift entry reached",
                "stderr: [TarnixProbe] Injected into org.example.demo\n",
                "system log: [TarnixProbe] Injected into org.example.demo",
                "stderr: [TarnixProbe] Swift bootstrap returned (UIApplication launch).\n",
                "system log: [TarnixProbe] Swift bootstrap returned (UIApplication launch).",
            }));
  world_.advance(500ms);
  Lines expected = linesOfAServerStart;
  expected.push_back("stderr: [TarnixProbe] Server started for org.example.demo\n");
  expected.push_back("system log: [TarnixProbe] Server started for org.example.demo");
  EXPECT_EQ(takeLines(), expected);
  EXPECT_EQ(world_.network.listeners.size(), 1U);
}

TEST_F(Bootstrap, KeepsOutOfAHostWithTheFullSdk) {
  world_.classRegistry.classes.insert("Tarnix.CompanionServer");
  tarnixprobe_bootstrap("C constructor");
  const Lines expected = {
      "stderr: [TarnixProbe] Bootstrap fired (C constructor)\n",
      "system log: [TarnixProbe] Bootstrap fired (C constructor)",
      "stderr: [TarnixProbe] About to call Swift bootstrap (sync from +load)\n",
      "system log: [TarnixProbe] About to call Swift bootstrap (sync from +load)",
      "stderr: [TarnixProbe] Swift entry reached\n",
      "system log: [TarnixProbe] Swift entry reached",
      "stderr: [TarnixProbe] Real Tarnix SDK detected — skipping probe.\n",
      "stderr: [TarnixProbe] Swift bootstrap returned (sync from +load).\n",
      "system log: [TarnixProbe] Swift bootstrap returned (sync from +load).",
  };
  EXPECT_EQ(takeLines(), expected);
  world_.notificationCenter.post(launched);
  world_.advance(10s);
  EXPECT_TRUE(world_.network.listeners.empty());
  EXPECT_EQ(world_.mainQueue.scheduledCount(), 0U) << "no timer either";
  EXPECT_TRUE(fakes::FakeServices::shared().files.empty());
}

TEST_F(Bootstrap, LooksForTheFullSdkAgainAtLaunch) {
  tarnixprobe_bootstrap("C constructor");
  world_.classRegistry.classes.insert("Tarnix.CompanionServer");
  world_.notificationCenter.post(launched);
  world_.settle();
  EXPECT_NE(standardError().find("Real Tarnix SDK detected"), std::string::npos);
}

TEST_F(Bootstrap, CallsAHostWithoutIdentityUnknown) {
  world_.bundle.identifier.reset();
  TarnixProbeBootstrap();
  world_.advance(500ms);
  EXPECT_NE(standardError().find("[TarnixProbe] Injected into unknown\n"), std::string::npos);
  EXPECT_NE(standardError().find("[TarnixProbe] Server started for unknown\n"), std::string::npos);
}

TEST_F(Bootstrap, SaysThatTheServerStartedThoughItHasNoListener) {
  world_.network.refusal = "no";
  TarnixProbeBootstrap();
  world_.advance(500ms);
  EXPECT_NE(standardError().find("[TarnixProbe] Failed to create listener: no\n"
                                 "[TarnixProbe] Server started for org.example.demo\n"),
            std::string::npos);
}

}  // namespace
}  // namespace tarnix::tests
