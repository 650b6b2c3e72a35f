#pragma once

#include "probe/link/companion_message.h"

/// The commands that change what happens to the host's requests. None has an answer; what cannot
/// be understood changes nothing. Main thread.
namespace tarnix::ProbeCommandHandler {

void handleAddMockRule(const CompanionMessage& message);
void handleRemoveMockRule(const CompanionMessage& message);
void handleAddInterceptRule(const CompanionMessage& message);
void handleRemoveInterceptRule(const CompanionMessage& message);

}  // namespace tarnix::ProbeCommandHandler
