#pragma once

#include <avahi-common/simple-watch.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "companion/client/deadline.h"
#include "companion/discovery/announced_service.h"

namespace tarnix::companion {

/// What one search has found so far, and whether it has come to its end: the browser has reported
/// everything, and each report has been resolved.
struct BrowseState {
  std::vector<AnnouncedService> services;
  int unresolved = 0;
  bool allReported = false;
  bool failed = false;

  bool isComplete() const { return failed || (allReported && unresolved == 0); }

  /// The same probe is reported once for each protocol family.
  void add(const char* name, std::uint16_t port) {
    AnnouncedService service{name, port};
    if (std::find(services.begin(), services.end(), service) == services.end()) {
      services.push_back(std::move(service));
    }
  }
};

struct SimplePollDeleter {
  void operator()(AvahiSimplePoll* poll) const { avahi_simple_poll_free(poll); }
};
using SimplePoll = std::unique_ptr<AvahiSimplePoll, SimplePollDeleter>;

/// Serves the search until it is complete or the time is over.
inline void runBrowse(AvahiSimplePoll* poll, const BrowseState& state, Deadline deadline) {
  while (!state.isComplete() && !isOver(deadline)) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(timeUntil(deadline));
    const auto wait = std::min<std::chrono::milliseconds::rep>(left.count(), 1000);
    if (avahi_simple_poll_iterate(poll, static_cast<int>(wait)) != 0) {
      return;
    }
  }
}

}  // namespace tarnix::companion
