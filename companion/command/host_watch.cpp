#include "companion/command/host_watch.h"

#include <sys/stat.h>

#include <utility>
#include <vector>

namespace tarnix::companion {
namespace {

std::optional<timespec> markerTime() {
  struct stat status {};
  return lstat(HostWatch::markerFile, &status) == 0 ? std::optional(status.st_ctim) : std::nullopt;
}

}  // namespace

HostWatch::HostWatch() : markerBefore_(markerTime()) {}

bool HostWatch::markerHasChanged() const {
  const std::optional<timespec> now = markerTime();
  return now && (!markerBefore_ || now->tv_sec != markerBefore_->tv_sec ||
                 now->tv_nsec != markerBefore_->tv_nsec);
}

std::optional<ProbedProcess> HostWatch::look(pid_t ancestor, bool regardless) {
  if (!regardless && !markerHasChanged()) {
    return std::nullopt;
  }
  for (ProbedProcess& process : scanner_.inspect(scanner_.familyOf(ancestor))) {
    if (!process.ports.empty()) {
      return std::move(process);
    }
  }
  return std::nullopt;
}

std::optional<ProbedProcess> HostWatch::findProbed(pid_t ancestor) const {
  std::vector<ProbedProcess> family = scanner_.inspect(scanner_.familyOf(ancestor));
  return family.empty() ? std::nullopt : std::optional(std::move(family.front()));
}

}  // namespace tarnix::companion
