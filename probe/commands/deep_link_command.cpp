#include "probe/commands/deep_link_command.h"

#include <optional>

#include "probe/model/fire_deep_link_command.h"
#include "probe/model/url.h"
#include "probe/platform/platform.h"

namespace tarnix::ProbeCommandHandler {

void handleFireDeepLink(const CompanionMessage& message) {
  const std::optional<FireDeepLinkCommand> command = message.decode<FireDeepLinkCommand>();
  const std::optional<Url> url = command ? Url::parse(command->url) : std::nullopt;
  platform::UrlOpener* const opener = platform::current().urlOpener;
  if (url && opener != nullptr) {
    opener->open(*url);
  }
}

}  // namespace tarnix::ProbeCommandHandler
