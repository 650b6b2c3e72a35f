#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <system_error>

#include "companion/command/child_process.h"
#include "companion/command/command_records.h"
#include "companion/command/commands.h"
#include "companion/command/host_session.h"
#include "companion/command/host_watch.h"
#include "companion/command/probe_library.h"
#include "companion/output/display_text.h"
#include "probe/link/json_codec.h"

namespace tarnix::companion {
namespace {

using namespace std::chrono_literals;

// A person does not notice the first; the second costs nothing to speak of, for as long as an
// application runs that may start another one.
constexpr std::chrono::milliseconds quickLook = 50ms;
constexpr std::chrono::milliseconds slowLook = 1s;
// How long a marker that is not rewritten is believed.
constexpr std::chrono::milliseconds markerPatience = 2s;

std::vector<std::string> ownEnvironment() {
  std::vector<std::string> variables;
  for (char** variable = environ; *variable != nullptr; ++variable) {
    variables.emplace_back(*variable);
  }
  return variables;
}

/// In one write, so that it does not mix with what the application says on the same stream.
void say(std::string line) {
  line += '\n';
  const ssize_t ignored = write(STDERR_FILENO, line.data(), line.size());
  static_cast<void>(ignored);
}

void announce(const ProbedProcess& host, const CommandOptions& options) {
  for (const std::uint16_t port : host.ports) {
    if (options.json) {
      say(printableJson(
          encodeJson(HostReady{host.application, host.pid, port}).value_or(std::string())));
    } else {
      say(fmt::format("tarnix: {} (process {}) can be reached on port {}",
                      printable(host.application), host.pid, port));
    }
  }
}

ExitCode reportStartFailure(const std::string& program, StartFailure failure,
                            const CommandOptions& options) {
  const std::string reason = std::generic_category().message(failure.error);
  switch (failure.error) {
    case ENOENT:
    case ENOTDIR:
      return report(
          ExitCode::notFound,
          fmt::format("{} was not found: {}. Check its name, or give its path.", program, reason),
          options);
    case EAGAIN:
    case ENOMEM:
      return report(ExitCode::cannotRun,
                    fmt::format("{} could not be started: {}. End something else and try again.",
                                program, reason),
                    options);
    default:
      return report(ExitCode::notExecutable,
                    fmt::format("{} could not be started: {}. Is it a program, and may it be "
                                "executed?",
                                program, reason),
                    options);
  }
}

std::string describeMiss(const std::optional<ProbedProcess>& host, const CommandOptions& options) {
  if (!host) {
    return fmt::format(
        "tarnix: no Qt 6 application has shown up within {:g} seconds; still waiting for the "
        "program to end",
        options.timeoutSeconds);
  }
  // Its main loop does not run yet: it still starts up, or waits for something itself.
  return fmt::format(
      "tarnix: {} (process {}) has the probe, but cannot be reached after {:g} seconds, as its "
      "main "
      "loop is busy or not running; still waiting for it",
      printable(host->application), host->pid, options.timeoutSeconds);
}

/// Attends to the child until it ends, and tells once where its probe, or that of an application
/// which it started, listens.
ProcessEnd attendUntilEnd(ChildProcess& child, HostWatch& watch, const CommandOptions& options) {
  const Deadline markerTrusted = deadlineIn(markerPatience);
  const Deadline deadline = deadlineIn(options.timeout());
  bool isAnnounced = false;
  bool isMissed = false;
  while (true) {
    const std::chrono::milliseconds wait = isAnnounced ? -1ms : isMissed ? slowLook : quickLook;
    const auto end = child.attend(static_cast<int>(wait.count()));
    if (const ProcessEnd* processEnd = std::get_if<ProcessEnd>(&end)) {
      return *processEnd;
    }
    // What a launcher left behind is our own child by now, so the search begins here.
    if (const auto host = watch.look(getpid(), isOver(markerTrusted))) {
      announce(*host, options);
      isAnnounced = true;
    } else if (!isMissed && isOver(deadline)) {
      isMissed = true;
      if (!options.json) {
        say(describeMiss(watch.findProbed(getpid()), options));
      }
    }
  }
}

}  // namespace

int runApplication(const CommandOptions& options, const std::vector<std::string>& commandLine) {
  const std::optional<std::filesystem::path> library = findProbeLibrary();
  if (!library) {
    return static_cast<int>(
        report(ExitCode::cannotRun,
               fmt::format("{} was not found in ../lib beside this program, nor where it would be "
                           "installed. Build it, or install this program together with it.",
                           probeLibraryName),
               options));
  }
  HostWatch watch;
  ChildProcess child;
  const auto started =
      child.start(commandLine, withPreloadedLibrary(ownEnvironment(), library->string()));
  if (const StartFailure* failure = std::get_if<StartFailure>(&started)) {
    return static_cast<int>(reportStartFailure(commandLine.front(), *failure, options));
  }
  return child.endAlike(attendUntilEnd(child, watch, options));
}

}  // namespace tarnix::companion
