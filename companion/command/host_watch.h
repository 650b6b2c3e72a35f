#pragma once

#include <sys/types.h>

#include <ctime>
#include <optional>

#include "companion/discovery/process_scanner.h"

namespace tarnix::companion {

/// Waits for a probe to listen in a process or in one that it started.
class HostWatch {
 public:
  /// What probes write once they listen.
  static constexpr const char* markerFile = "/tmp/tarnprobe_ready";

  /// Made before the process is started: what the marker says by then does not count.
  HostWatch();

  /// The first process of the family whose probe listens; nothing while there is none. The marker
  /// is looked at first, being cheap; `regardless` of it, the processes themselves are asked, as
  /// must be where another user's marker stands in the way.
  std::optional<ProbedProcess> look(pid_t ancestor, bool regardless);

  /// The first process of the family that has the probe, whether it listens by now or not.
  std::optional<ProbedProcess> findProbed(pid_t ancestor) const;

 private:
  bool markerHasChanged() const;

  ProcessScanner scanner_;
  std::optional<timespec> markerBefore_;
};

}  // namespace tarnix::companion
