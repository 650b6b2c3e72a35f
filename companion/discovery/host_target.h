#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "companion/client/deadline.h"
#include "companion/discovery/announced_service.h"
#include "companion/discovery/process_scanner.h"

namespace tarnix::companion {

/// A host that a companion can connect to.
struct HostTarget {
  /// The executable's name; empty when the process cannot be seen from here.
  std::string application;
  /// The name that it is announced under; empty when it is not.
  std::string serviceName;
  std::optional<pid_t> pid;
  std::uint16_t port = 0;

  bool operator==(const HostTarget&) const = default;
};

/// One target for each port, by application and process id. An announcement is matched with the
/// process that listens on its port, and settles which of several ports is the probe's.
std::vector<HostTarget> mergeTargets(const std::vector<ProbedProcess>& processes,
                                     const std::vector<AnnouncedService>& services);

/// How a user names the host that is meant; everything that is given must fit.
struct HostChoice {
  std::optional<pid_t> pid;
  std::optional<std::string> name;
};

/// The targets that fit. A name is an application's or a service's, whole or in part, upper and
/// lower case alike; where it is some target's whole name, the partial ones do not count.
std::vector<HostTarget> matchingTargets(const std::vector<HostTarget>& targets,
                                        const HostChoice& choice);

/// All that can be found: among the processes of this machine, and by what is announced until
/// `announcementsUntil`.
std::vector<HostTarget> discoverTargets(Deadline announcementsUntil);

/// As quickly as can be: asks for announcements only when the processes leave the choice open.
std::vector<HostTarget> discoverMatchingTargets(const HostChoice& choice,
                                                Deadline announcementsUntil);

}  // namespace tarnix::companion
