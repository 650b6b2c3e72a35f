#pragma once

#include <optional>
#include <vector>

#include "companion/client/deadline.h"
#include "companion/discovery/announced_service.h"

/// Looks for announced probes on the loopback interface. Both ways block until everything that is
/// announced has been seen, at most until `deadline`. One thread at a time.
namespace tarnix::companion {

/// Asks the system's mDNS daemon; nothing when none runs.
std::optional<std::vector<AnnouncedService>> browseThroughDaemon(Deadline deadline);

/// Asks on the loopback interface itself; no packet leaves the machine. Nothing when the system
/// does not let us.
std::optional<std::vector<AnnouncedService>> browseOnLoopback(Deadline deadline);

/// Through the daemon where one runs, else without.
std::vector<AnnouncedService> browseServices(Deadline deadline);

}  // namespace tarnix::companion
