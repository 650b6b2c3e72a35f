#include "probe/capture/probe_perf_monitor.h"

#include <algorithm>

#include "probe/platform/main_thread.h"
#include "probe/platform/memory.h"
#include "probe/platform/platform.h"

namespace tarnix {
namespace ProbePerfMonitor {
namespace {

constexpr double bytesPerMebibyte = 1'048'576;

double memoryMB() {
  return static_cast<double>(platform::residentMemory().value_or(0)) / bytesPerMebibyte;
}

void takeSample() {
  platform::assertMainThread();
  detail::State& state = detail::state();
  if (state.samples.size() >= maximumSamples) {
    state.samples.pop_front();
  }
  state.samples.push_back({state.currentFPS, memoryMB(), platform::current().clock->now()});
}

}  // namespace

namespace detail {

State& state() {
  static State& shared = *new State;
  return shared;
}

}  // namespace detail

void install() {
  platform::assertMainThread();
  const platform::Platform& platform = platform::current();
  detail::State& state = detail::state();
  state.displayLinks.push_back(platform.display->displayLink(
      [](std::chrono::duration<double> timestamp) {
        DisplayLinkTarget::shared().tick(timestamp.count());
      },
      // Counted, not shown: sixty times a second would be most of what the probe costs.
      platform::TickDelivery::Deferred));
  state.timers.push_back(platform.mainQueue->scheduledTimer(
      sampleInterval, [] { platform::current().mainQueue->async(takeSample); }));
}

Snapshot snapshot() {
  platform::assertMainThread();
  const detail::State& state = detail::state();
  Snapshot result{.fps = state.currentFPS, .memoryMB = memoryMB()};
  for (const detail::Sample& sample : state.samples) {
    result.avgFPS += sample.fps;
    result.peakMemoryMB = std::max(result.peakMemoryMB, sample.memoryMB);
  }
  if (!state.samples.empty()) {
    result.avgFPS /= static_cast<double>(state.samples.size());
  }
  return result;
}

}  // namespace ProbePerfMonitor

DisplayLinkTarget& DisplayLinkTarget::shared() {
  static DisplayLinkTarget& target = *new DisplayLinkTarget;
  return target;
}

void DisplayLinkTarget::tick(double timestamp) {
  platform::assertMainThread();
  ProbePerfMonitor::detail::State& state = ProbePerfMonitor::detail::state();
  if (state.lastTimestamp > 0) {
    ++state.frameCount;
    const double elapsed = timestamp - state.lastTimestamp;
    if (elapsed < ProbePerfMonitor::windowSeconds) {
      return;
    }
    state.currentFPS = static_cast<double>(state.frameCount) / elapsed;
    state.frameCount = 0;
  }
  state.lastTimestamp = timestamp;
}

}  // namespace tarnix
