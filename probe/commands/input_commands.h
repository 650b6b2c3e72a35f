#pragma once

#include "probe/link/companion_message.h"

/// The commands that act on the host. Each is answered with what became of it; what cannot be
/// understood has no answer. Main thread.
namespace tarnix::ProbeCommandHandler {

void handleTap(const CompanionMessage& message);
void handleSwipe(const CompanionMessage& message);
void handleTypeText(const CompanionMessage& message);

}  // namespace tarnix::ProbeCommandHandler
