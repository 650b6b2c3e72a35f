#pragma once

namespace tarnix::ProbeCommandHandler {

/// Answers "command.screenHTML": the key window as text, under the name of the screen on view.
void handleScreenHTML();

}  // namespace tarnix::ProbeCommandHandler
