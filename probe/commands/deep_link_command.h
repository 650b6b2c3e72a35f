#pragma once

#include "probe/link/companion_message.h"

namespace tarnix::ProbeCommandHandler {

/// Opens a URL in the host; text that is none is dropped. No answer. Main thread.
void handleFireDeepLink(const CompanionMessage& message);

}  // namespace tarnix::ProbeCommandHandler
