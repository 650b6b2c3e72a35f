#pragma once

#include <cstdint>
#include <string>

#include "companion/command/command_options.h"
#include "companion/command/exit_code.h"
#include "companion/command/log_filter.h"

namespace tarnix::companion {

struct LogsOptions {
  LogFilter filter;
  /// Goes on with new lines as they are written.
  bool follow = false;
  /// Of the lines that were captured before, at most so many; 0: all.
  std::uint64_t newest = 0;
  /// Ends after so many lines; 0: never.
  std::uint64_t count = 0;
};

/// What an application has written to its log.
ExitCode runLogs(const CommandOptions& options, const LogsOptions& logs);

struct CrashOptions {
  /// Where reports lie.
  std::string folder = "/tmp";
  /// Part of the application's identifier; empty: all.
  std::string application;
  /// Every report as a whole, not only the newest.
  bool all = false;
};

/// What applications left behind that crashed.
ExitCode runCrash(const CommandOptions& options, const CrashOptions& crash);

}  // namespace tarnix::companion
