#pragma once

namespace tarnix::ProbeCommandHandler {

/// Answers "command.perfSnapshot": frame rate and memory, under the name of the screen on view.
void handlePerfSnapshot();

}  // namespace tarnix::ProbeCommandHandler
