#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "companion/discovery/proc_text.h"

namespace tarnix::companion {

/// A process of this machine in which a probe runs.
struct ProbedProcess {
  pid_t pid = 0;
  /// The executable's file name.
  std::string application;
  /// Where its probe listens, as far as can be told from outside: one port, none while the probe
  /// has not started to listen, several when the application's own listeners look the same.
  std::vector<std::uint16_t> ports;
};

/// Finds probes by looking at the processes themselves: those of this user, for root all, in this
/// network namespace. Processes that end meanwhile are passed over.
class ProcessScanner {
 public:
  explicit ProcessScanner(std::filesystem::path proc = "/proc");

  std::vector<ProbedProcess> scan() const;

  /// The processes among `candidates` in which a probe runs.
  std::vector<ProbedProcess> inspect(const std::vector<pid_t>& candidates) const;

  /// The process and everything that it started, as far as it is still alive.
  std::vector<pid_t> familyOf(pid_t ancestor) const;

 private:
  std::vector<pid_t> allProcesses() const;

  std::filesystem::path proc_;
};

}  // namespace tarnix::companion
