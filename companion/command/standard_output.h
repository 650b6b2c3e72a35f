#pragma once

#include <string_view>

#include "companion/command/command_options.h"
#include "companion/command/exit_code.h"

namespace tarnix::companion {

/// Writes results to standard output; a failure to do so, such as a full disk, is reported.
ExitCode writeToStandardOutput(std::string_view text, const CommandOptions& options);

}  // namespace tarnix::companion
