#pragma once

#include <string>
#include <vector>

#include "companion/command/command_options.h"
#include "companion/command/exit_code.h"

/// What `tarnix` does, one function a command. Each prints its results on standard output and its
/// troubles on standard error.
namespace tarnix::companion {

/// The applications that can be reached.
ExitCode runList(const CommandOptions& options);

struct SyncOptions {
  /// Every request and every log line, not only the newest.
  bool all = false;
};

/// What the host has captured so far.
ExitCode runSync(const CommandOptions& options, const SyncOptions& sync);

struct HtmlOptions {
  /// Where the document goes; "-" and nothing mean standard output.
  std::string file;
};

/// The screen as HTML.
ExitCode runHtml(const CommandOptions& options, const HtmlOptions& html);

/// Starts an application with the probe in it and waits for its end. `commandLine` is not empty.
/// Ends the way the application does; comes back only with an exit code of its own or the
/// application's, as a number.
int runApplication(const CommandOptions& options, const std::vector<std::string>& commandLine);

}  // namespace tarnix::companion
