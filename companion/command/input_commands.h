#pragma once

#include <string>

#include "companion/command/command_options.h"
#include "companion/command/exit_code.h"
#include "companion/command/step.h"

namespace tarnix::companion {

/// Does one thing with an application and says what came of it.
ExitCode runStep(const CommandOptions& options, const Step& step);

/// Does what a file of steps says, and says what came of each; the first that fails ends it.
/// "-" means standard input.
ExitCode runSteps(const CommandOptions& options, const std::string& file);

}  // namespace tarnix::companion
