#pragma once

#include <string>
#include <string_view>

#include "companion/command/command_options.h"
#include "companion/command/exit_code.h"

namespace tarnix::companion {

/// Writes results to a file in place of what is in it; a failure to do so is reported.
ExitCode writeToFile(const std::string& file, std::string_view bytes,
                     const CommandOptions& options);

}  // namespace tarnix::companion
