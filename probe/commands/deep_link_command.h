#pragma once

#include <string>
#include <tuple>

#include "probe/link/companion_message.h"
#include "probe/link/record.h"

namespace tarnix {

struct FireDeepLinkCommand {
  std::string url;

  static constexpr auto fields() { return std::tuple{Field{"url", &FireDeepLinkCommand::url}}; }
};

namespace ProbeCommandHandler {

/// Opens a URL in the host; text that is none is dropped. No answer. Main thread.
void handleFireDeepLink(const CompanionMessage& message);

}  // namespace ProbeCommandHandler
}  // namespace tarnix
