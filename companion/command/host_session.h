#pragma once

#include <chrono>
#include <string>
#include <variant>

#include "companion/client/companion_client.h"
#include "companion/command/command_options.h"
#include "companion/command/exit_code.h"
#include "companion/discovery/host_target.h"
#include "companion/output/terminal.h"

namespace tarnix::companion {

/// How long commands listen for announcements: on one machine they arrive within milliseconds; the
/// mDNS daemon takes about a second until it is sure that it has them all.
inline constexpr std::chrono::steady_clock::duration announcementTime =
    std::chrono::milliseconds(1500);

/// A connection to the host that the user means.
struct HostSession {
  HostTarget target;
  CompanionClient client;
};

/// Finds the host that the options choose and connects to it. When that fails, says so on standard
/// error and answers with how the program is to end.
std::variant<HostSession, ExitCode> openSession(const CommandOptions& options, Deadline deadline);

/// How the program is to end that could go no further for `error`.
ExitCode exitCodeOf(const ClientError& error);

/// Says on standard error what went wrong, and answers with how the program is to end.
ExitCode report(const ClientError& error, const CommandOptions& options);
ExitCode report(ExitCode code, const std::string& message, const CommandOptions& options);

/// A table of targets for people.
std::string describeTargets(const std::vector<HostTarget>& targets, const Terminal& terminal);

}  // namespace tarnix::companion
