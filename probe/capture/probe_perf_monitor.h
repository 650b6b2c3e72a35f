#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

#include "probe/platform/display.h"
#include "probe/platform/main_queue.h"

namespace tarnix {

/// The host's frame rate and memory over the last minute. Nothing is sent unasked. Main thread.
namespace ProbePerfMonitor {

inline constexpr std::size_t maximumSamples = 60;
inline constexpr std::chrono::seconds sampleInterval{1};
/// A frame rate is counted over at least this long.
inline constexpr double windowSeconds = 1.0;

struct Snapshot {
  /// Frames a second over the last window; 0 before the first one has closed.
  double fps = 0;
  /// In mebibytes, now; 0 when the system does not say.
  double memoryMB = 0;
  /// Over the samples; 0 without any.
  double avgFPS = 0;
  double peakMemoryMB = 0;
};

/// Starts one more display link and one more timer, each time it is called; those of earlier calls
/// go on. So after a restart of the server every frame is counted twice and samples are taken twice
/// as often: whoever reads the figures after a restart knows them for what they are.
void install();

Snapshot snapshot();

namespace detail {

struct Sample {
  double fps;
  double memoryMB;
  std::chrono::system_clock::time_point timestamp;
};

struct State {
  /// When the current window began, in seconds; 0 before the first frame.
  double lastTimestamp = 0;
  /// Frames in the current window.
  std::int64_t frameCount = 0;
  double currentFPS = 0;
  /// Oldest first.
  std::deque<Sample> samples;
  std::vector<std::unique_ptr<platform::DisplayLink>> displayLinks;
  std::vector<std::unique_ptr<platform::Timer>> timers;
};

/// Of the process; only tests put it back.
State& state();

}  // namespace detail

}  // namespace ProbePerfMonitor

/// What display links call.
class DisplayLinkTarget {
 public:
  static DisplayLinkTarget& shared();

  /// One frame, shown at `timestamp` seconds.
  void tick(double timestamp);
};

}  // namespace tarnix
