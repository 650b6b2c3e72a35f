#include "probe/capture/probe_perf_monitor.h"

#include "probe/model/perf_snapshot_response.h"
#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

using namespace std::chrono_literals;

constexpr std::uint64_t mebibyte = 1'048'576;

class PerfMonitor : public ServerTest {
 protected:
  PerfMonitor() {
    ProbePerfMonitor::detail::state() = {};
    setMemory(100);
    ProbePerfMonitor::install();
  }
  // Its timers and links belong to this world.
  ~PerfMonitor() override { ProbePerfMonitor::detail::state() = {}; }

  static void setMemory(std::uint64_t megabytes) {
    fakes::FakeServices::shared().residentMemory = megabytes * mebibyte;
  }

  /// Frames at 60 Hz from `begin`, the first one included.
  void showFrames(double begin, int count) {
    for (int frame = 0; frame < count; ++frame) {
      world_.display.showFrame(begin + frame / 60.0);
    }
  }
};

TEST_F(PerfMonitor, KnowsTheMemoryAtOnceAndNothingElse) {
  const ProbePerfMonitor::Snapshot snapshot = ProbePerfMonitor::snapshot();
  EXPECT_EQ(snapshot.fps, 0);
  EXPECT_EQ(snapshot.memoryMB, 100);
  EXPECT_EQ(snapshot.avgFPS, 0);
  EXPECT_EQ(snapshot.peakMemoryMB, 0);
}

TEST_F(PerfMonitor, CountsTheFramesOfAWindow) {
  showFrames(10.0, 60);
  EXPECT_EQ(ProbePerfMonitor::snapshot().fps, 0) << "the window is still open";
  world_.display.showFrame(11.0);
  EXPECT_EQ(ProbePerfMonitor::snapshot().fps, 60);
  EXPECT_EQ(ProbePerfMonitor::detail::state().lastTimestamp, 11.0);
  EXPECT_EQ(ProbePerfMonitor::detail::state().frameCount, 0);
}

TEST_F(PerfMonitor, ShowsABusyMainThreadAsLostFrames) {
  showFrames(10.0, 31);
  world_.display.showFrame(11.5);
  EXPECT_DOUBLE_EQ(ProbePerfMonitor::snapshot().fps, 31 / 1.5);
}

TEST_F(PerfMonitor, KeepsTheLastRateWhileAWindowIsOpen) {
  showFrames(10.0, 61);
  world_.display.showFrame(11.9);
  EXPECT_EQ(ProbePerfMonitor::snapshot().fps, 60);
}

TEST_F(PerfMonitor, AveragesOverTheSamples) {
  world_.advance(1s);
  showFrames(10.0, 61);
  world_.advance(1s);
  EXPECT_EQ(ProbePerfMonitor::detail::state().samples.size(), 2U);
  EXPECT_EQ(ProbePerfMonitor::snapshot().avgFPS, 30);
}

TEST_F(PerfMonitor, TakesThePeakFromTheSamplesAlone) {
  for (const std::uint64_t megabytes : {100U, 120U, 110U}) {
    setMemory(megabytes);
    world_.advance(1s);
  }
  setMemory(500);
  EXPECT_EQ(ProbePerfMonitor::snapshot().peakMemoryMB, 120);
  EXPECT_EQ(ProbePerfMonitor::snapshot().memoryMB, 500);
}

TEST_F(PerfMonitor, KeepsTheSamplesOfTheLastMinute) {
  setMemory(900);
  world_.advance(1s);
  setMemory(100);
  world_.clock.time += 1s;
  for (int second = 0; second < 60; ++second) {
    world_.advance(1s);
  }
  EXPECT_EQ(ProbePerfMonitor::detail::state().samples.size(), 60U);
  EXPECT_EQ(ProbePerfMonitor::detail::state().samples.front().timestamp, world_.clock.time);
  EXPECT_EQ(ProbePerfMonitor::snapshot().peakMemoryMB, 100);
}

TEST_F(PerfMonitor, SaysZeroWhereTheSystemDoesNotSay) {
  fakes::FakeServices::shared().residentMemory.reset();
  EXPECT_EQ(ProbePerfMonitor::snapshot().memoryMB, 0);
}

TEST_F(PerfMonitor, CountsTwiceOnceItIsInstalledTwice) {
  ProbePerfMonitor::install();
  EXPECT_EQ(world_.display.linkCount(), 2U);
  showFrames(10.0, 121);
  EXPECT_EQ(ProbePerfMonitor::snapshot().fps, 120);
  world_.advance(1s);
  EXPECT_EQ(ProbePerfMonitor::detail::state().samples.size(), 2U);
}

TEST_F(PerfMonitor, AnswersACompanion) {
  startServer();
  const auto companion = connectCompanion();
  setMemory(64);
  showFrames(10.0, 61);
  world_.advance(1s);
  ProbeScreenTracker::setLastScreenName("Board");
  sendCommand(*companion, CompanionMessageType::commandPerfSnapshot, "not read");
  const CompanionMessage answer = messagesOf(companion->written).back();
  EXPECT_EQ(answer.type, CompanionMessageType::responsePerfSnapshot);
  EXPECT_EQ(answer.decode<PerfSnapshotResponse>(),
            (PerfSnapshotResponse{
                .fps = 60, .memoryMB = 64, .avgFPS = 60, .peakMemoryMB = 64, .screen = "Board"}));
}

}  // namespace
}  // namespace tarnix::tests
