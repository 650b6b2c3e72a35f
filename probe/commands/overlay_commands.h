#pragma once

#include "probe/link/companion_message.h"

/// What the companion has shown on the device. None has an answer. Main thread.
namespace tarnix::ProbeCommandHandler {

void handleShowOverlay(const CompanionMessage& message);
void handleHideOverlay();

}  // namespace tarnix::ProbeCommandHandler
