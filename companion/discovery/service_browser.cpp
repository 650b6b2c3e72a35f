#include "companion/discovery/service_browser.h"

namespace tarnix::companion {

std::vector<AnnouncedService> browseServices(Deadline deadline) {
  if (std::optional<std::vector<AnnouncedService>> services = browseThroughDaemon(deadline)) {
    return *std::move(services);
  }
  return browseOnLoopback(deadline).value_or(std::vector<AnnouncedService>());
}

}  // namespace tarnix::companion
