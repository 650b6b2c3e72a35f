#pragma once

#include "companion/client/companion_client.h"
#include "companion/command/command_options.h"
#include "companion/command/exit_code.h"

namespace tarnix::companion {

/// Sends the application that the options choose a command that has no answer, and stays until it
/// can be taken as arrived: a probe that gets a new companion may drop it at once, and with it what
/// it has sent. That is then sent again, or reported, by `repetition`. Says on standard error what
/// went wrong.
ExitCode deliver(const CommandOptions& options, const CompanionMessage& command,
                 Repetition repetition = Repetition::allowed);

}  // namespace tarnix::companion
