#pragma once

#include <functional>
#include <optional>
#include <string>

#include "companion/command/command_options.h"
#include "companion/command/exit_code.h"

namespace CLI {
class App;
}

namespace tarnix::companion {

/// Has an application show an effect over its windows. `category` is the protocol's name for it.
ExitCode runShowOverlay(const CommandOptions& options, const std::string& category,
                        const std::optional<std::string>& detail, std::optional<bool> passed);

/// Lets the name of the tool go that an application shows.
ExitCode runHideOverlay(const CommandOptions& options);

/// `tarnix overlay`. `options` outlives the actions, which `does` hangs on a command once the
/// command line was understood.
void addOverlayCommands(CLI::App& app, CommandOptions& options,
                        const std::function<void(CLI::App*, std::function<ExitCode()>)>& does);

}  // namespace tarnix::companion
