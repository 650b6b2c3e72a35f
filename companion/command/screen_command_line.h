#pragma once

#include <functional>

#include "companion/command/command_options.h"
#include "companion/command/exit_code.h"

namespace tarnix::companion {

/// The commands about an application's screen. `options` outlives the actions, which `does` hangs
/// on a command once the command line was understood.
void addScreenCommands(CLI::App& app, CommandOptions& options,
                       const std::function<void(CLI::App*, std::function<ExitCode()>)>& does);

}  // namespace tarnix::companion
