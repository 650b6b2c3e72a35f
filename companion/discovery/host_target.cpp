#include "companion/discovery/host_target.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <tuple>
#include <utility>

#include "companion/client/letter_case.h"
#include "companion/discovery/service_browser.h"

namespace tarnix::companion {
namespace {

enum class NameMatch { none, part, whole };

NameMatch matchName(const HostTarget& target, const std::string& wanted) {
  NameMatch best = NameMatch::none;
  for (const std::string& name : {lowerCase(target.application), lowerCase(target.serviceName)}) {
    if (name == wanted) {
      return NameMatch::whole;
    }
    if (name.find(wanted) != std::string::npos) {
      best = NameMatch::part;
    }
  }
  return best;
}

std::string takeServiceName(std::vector<AnnouncedService>& services, std::uint16_t port) {
  const auto found = std::find_if(services.begin(), services.end(),
                                  [&](const auto& service) { return service.port == port; });
  if (found == services.end()) {
    return {};
  }
  std::string name = std::move(found->name);
  services.erase(found);
  return name;
}

}  // namespace

std::vector<HostTarget> mergeTargets(const std::vector<ProbedProcess>& processes,
                                     const std::vector<AnnouncedService>& services) {
  std::vector<AnnouncedService> unmatched = services;
  std::vector<HostTarget> targets;
  for (const ProbedProcess& process : processes) {
    std::vector<HostTarget> ofProcess;
    for (const std::uint16_t port : process.ports) {
      ofProcess.push_back(
          {process.application, takeServiceName(unmatched, port), process.pid, port});
    }
    const auto isAnnounced = [](const HostTarget& target) { return !target.serviceName.empty(); };
    if (std::any_of(ofProcess.begin(), ofProcess.end(), isAnnounced)) {
      std::erase_if(ofProcess, std::not_fn(isAnnounced));
    }
    std::move(ofProcess.begin(), ofProcess.end(), std::back_inserter(targets));
  }
  for (AnnouncedService& service : unmatched) {
    targets.push_back({{}, std::move(service.name), std::nullopt, service.port});
  }
  std::sort(targets.begin(), targets.end(), [](const HostTarget& a, const HostTarget& b) {
    return std::tie(a.application, a.pid, a.port) < std::tie(b.application, b.pid, b.port);
  });
  return targets;
}

std::vector<HostTarget> matchingTargets(const std::vector<HostTarget>& targets,
                                        const HostChoice& choice) {
  std::vector<HostTarget> whole;
  std::vector<HostTarget> part;
  const std::string wanted = lowerCase(choice.name.value_or(""));
  for (const HostTarget& target : targets) {
    if (choice.pid && target.pid != choice.pid) {
      continue;
    }
    const NameMatch match = choice.name ? matchName(target, wanted) : NameMatch::whole;
    if (match != NameMatch::none) {
      (match == NameMatch::whole ? whole : part).push_back(target);
    }
  }
  return whole.empty() ? part : whole;
}

std::vector<HostTarget> discoverTargets(Deadline announcementsUntil) {
  const std::vector<AnnouncedService> services = browseServices(announcementsUntil);
  return mergeTargets(ProcessScanner().scan(), services);
}

std::vector<HostTarget> discoverMatchingTargets(const HostChoice& choice,
                                                Deadline announcementsUntil) {
  std::vector<HostTarget> found =
      matchingTargets(mergeTargets(ProcessScanner().scan(), {}), choice);
  if (found.size() == 1) {
    return found;
  }
  return matchingTargets(discoverTargets(announcementsUntil), choice);
}

}  // namespace tarnix::companion
