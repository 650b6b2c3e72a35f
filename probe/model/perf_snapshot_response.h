#pragma once

#include <string>
#include <tuple>

#include "probe/link/record.h"

namespace tarnix {

/// What "response.perfSnapshot" carries.
struct PerfSnapshotResponse {
  /// Frames a second, now and over the last minute.
  double fps = 0;
  /// Mebibytes, now.
  double memoryMB = 0;
  double avgFPS = 0;
  /// The most of the last minute.
  double peakMemoryMB = 0;
  /// Name of the screen on view.
  std::string screen;

  bool operator==(const PerfSnapshotResponse&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"fps", &PerfSnapshotResponse::fps},
                      Field{"memoryMB", &PerfSnapshotResponse::memoryMB},
                      Field{"avgFPS", &PerfSnapshotResponse::avgFPS},
                      Field{"peakMemoryMB", &PerfSnapshotResponse::peakMemoryMB},
                      Field{"screen", &PerfSnapshotResponse::screen}};
  }
};

}  // namespace tarnix
