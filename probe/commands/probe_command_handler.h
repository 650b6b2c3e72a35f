#pragma once

#include "probe/link/companion_message.h"

/// Where every message of a companion arrives. Main thread, one message at a time, in order of
/// arrival; keeps nothing. Whatever is wrong with a message, its sender gets no error: the message
/// is dropped.
namespace tarnix::ProbeCommandHandler {

void handle(const CompanionMessage& message) noexcept;

}  // namespace tarnix::ProbeCommandHandler
