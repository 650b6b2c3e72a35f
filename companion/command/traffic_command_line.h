#pragma once

#include <functional>

#include "companion/command/command_options.h"
#include "companion/command/exit_code.h"

namespace tarnix::companion {

/// Makes a command do something once the command line was understood.
using SetAction = std::function<void(CLI::App*, std::function<ExitCode()>)>;

/// The commands about an application's HTTP traffic, and what they understand. `options` outlives
/// the actions.
void addTrafficCommands(CLI::App& app, CommandOptions& options, const SetAction& does);

}  // namespace tarnix::companion
