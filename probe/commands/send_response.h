#pragma once

#include <optional>
#include <utility>

#include "probe/link/companion_message.h"
#include "probe/link/probe_server.h"
#include "probe/platform/now.h"

namespace tarnix::ProbeCommandHandler {

/// Sends the answer to a command; an answer that has no JSON form is not sent. Main thread.
template <Record R>
void sendResponse(CompanionMessageType type, const R& response) {
  std::optional<CompanionMessage> message = CompanionMessage::make(type, response, platform::now());
  if (message) {
    ProbeServer::shared().send(*std::move(message));
  }
}

}  // namespace tarnix::ProbeCommandHandler
