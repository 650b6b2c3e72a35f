#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "companion/command/command_options.h"
#include "companion/command/exit_code.h"
#include "companion/command/log_filter.h"

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

struct MockOptions {
  std::string pattern;
  /// How the pattern is applied; absent as the probe does by default.
  std::optional<std::string> mode;
  std::optional<std::string> method;
  std::optional<std::int64_t> status;
  /// The text itself, or "@" and the name of a file that holds it.
  std::optional<std::string> body;
  /// Each "NAME: VALUE".
  std::vector<std::string> headers;
  std::optional<std::string> name;
};

struct InterceptOptions {
  std::string pattern;
  std::optional<std::string> mode;
  std::optional<std::string> method;
  std::optional<std::string> name;
};

/// Have requests answered or failed by a rule; both print the rule's identifier.
ExitCode runMockAdd(const CommandOptions& options, const MockOptions& mock);
ExitCode runInterceptAdd(const CommandOptions& options, const InterceptOptions& intercept);
ExitCode runMockRemove(const CommandOptions& options, const std::string& ruleId);
ExitCode runInterceptRemove(const CommandOptions& options, const std::string& ruleId);

/// Has the probe forget what it has captured.
ExitCode runClear(const CommandOptions& options);

/// Opens a URL inside the application.
ExitCode runOpen(const CommandOptions& options, const std::string& url);

struct WatchOptions {
  /// Parts of host names, upper and lower case alike; none: all hosts.
  std::vector<std::string> hosts;
  std::vector<std::string> methods;
  /// See `ExchangeFilter`.
  std::vector<std::string> statuses;
  bool body = false;
  /// Lines of the log beside the exchanges; absent: none.
  std::optional<LogFilter> log = LogFilter();
  /// Ends after so many exchanges and lines were shown; 0: never.
  std::uint64_t count = 0;
  /// Also what was captured before.
  bool all = false;
};

/// Shows exchanges and lines of the log as they happen, until it is interrupted.
ExitCode runWatch(const CommandOptions& options, const WatchOptions& watch);

/// Writes the exchanges that the probe has kept to a file, as an HTTP archive.
ExitCode runHar(const CommandOptions& options, const std::string& file);

/// Starts an application with the probe in it and waits for its end. `commandLine` is not empty.
/// Ends the way the application does; comes back only with an exit code of its own or the
/// application's, as a number.
int runApplication(const CommandOptions& options, const std::vector<std::string>& commandLine);

}  // namespace tarnix::companion
