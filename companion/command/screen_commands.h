#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "companion/command/command_options.h"
#include "companion/command/exit_code.h"

/// What `tarnix` asks about an application's screen. Each waits for its answer no longer than the
/// options say, and says so when none came: a host whose main thread is busy answers nothing.
namespace tarnix::companion {

/// What is written on the screen.
ExitCode runText(const CommandOptions& options);

struct FindOptions {
  std::string text;
  /// The whole label, not a part of it.
  bool exact = false;
};

/// Where elements are. Ends with `ExitCode::negative` when there is none.
ExitCode runFind(const CommandOptions& options, const FindOptions& find);

/// The views and their frames.
ExitCode runSnapshot(const CommandOptions& options);

struct ScreenshotOptions {
  /// "-" for standard output; empty to show the picture on the terminal.
  std::string file;
  /// Shows it on the terminal although there is a file.
  bool show = false;
};

ExitCode runScreenshot(const CommandOptions& options, const ScreenshotOptions& screenshot);

struct AuditOptions {
  /// Where a SARIF log goes; empty: nowhere.
  std::string sarifFile;
  /// Warnings, too, are a reason to end with `ExitCode::negative`.
  bool strict = false;
};

/// What keeps people from using the screen. Ends with `ExitCode::negative` when there are errors.
ExitCode runAudit(const CommandOptions& options, const AuditOptions& audit);

struct PerfOptions {
  /// Goes on, with a new line each interval.
  bool watch = false;
  double intervalSeconds = 1;
  /// Ends after so many lines; 0: never.
  std::uint64_t count = 0;
};

/// Frame rate and memory.
ExitCode runPerf(const CommandOptions& options, const PerfOptions& perf);

struct ConsoleOptions {
  /// Only lines of this level.
  std::optional<std::string> level;
  /// At most so many lines, the newest.
  std::optional<std::int64_t> limit;
};

/// What web pages have written to their consoles.
ExitCode runConsole(const CommandOptions& options, const ConsoleOptions& console);

}  // namespace tarnix::companion
