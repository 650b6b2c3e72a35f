#include "companion/discovery/process_scanner.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <map>
#include <set>
#include <system_error>
#include <utility>

namespace tarnix::companion {
namespace {

using std::filesystem::path;

std::string readFile(const path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::string text;
  std::array<char, 65'536> block{};
  while (stream.read(block.data(), block.size()) || stream.gcount() > 0) {
    text.append(block.data(), static_cast<std::size_t>(stream.gcount()));
  }
  return text;
}

std::string readLink(const path& link) {
  std::error_code error;
  const path target = std::filesystem::read_symlink(link, error);
  return error ? std::string() : target.string();
}

/// Calls `visit` with each name in the directory; a directory that cannot be read has none.
template <class Visit>
void forEachName(const path& directory, Visit visit) {
  std::error_code error;
  std::filesystem::directory_iterator entry(directory, error);
  while (!error && entry != std::filesystem::directory_iterator()) {
    visit(entry->path());
    entry.increment(error);
  }
}

std::optional<pid_t> processId(const std::string& name) {
  pid_t pid = 0;
  const char* end = name.data() + name.size();
  const auto result = std::from_chars(name.data(), end, pid);
  return result.ec == std::errc() && result.ptr == end ? std::optional(pid) : std::nullopt;
}

bool mayInspect(const path& process) {
  struct stat status {};
  return stat(process.c_str(), &status) == 0 && (geteuid() == 0 || status.st_uid == geteuid());
}

struct Listeners {
  std::vector<ListeningSocket> ipv4;
  std::vector<ListeningSocket> ipv6;
};

std::set<std::uint16_t> portsOf(const std::vector<ListeningSocket>& listeners,
                                const std::set<std::uint64_t>& inodes) {
  std::set<std::uint16_t> ports;
  for (const ListeningSocket& listener : listeners) {
    if (inodes.contains(listener.inode)) {
      ports.insert(listener.port);
    }
  }
  return ports;
}

/// A probe listens on both loopback addresses, on the same port, wherever the machine has both;
/// that tells its listener from most of an application's own.
std::vector<std::uint16_t> probePorts(const Listeners& listeners,
                                      const std::set<std::uint64_t>& inodes) {
  const std::set<std::uint16_t> ipv4 = portsOf(listeners.ipv4, inodes);
  const std::set<std::uint16_t> ipv6 = portsOf(listeners.ipv6, inodes);
  std::vector<std::uint16_t> both;
  std::set_intersection(ipv4.begin(), ipv4.end(), ipv6.begin(), ipv6.end(),
                        std::back_inserter(both));
  return both.empty() ? std::vector<std::uint16_t>(ipv4.begin(), ipv4.end()) : both;
}

std::set<std::uint64_t> socketInodesOf(const path& process) {
  std::set<std::uint64_t> inodes;
  forEachName(process / "fd", [&](const path& descriptor) {
    if (const auto inode = socketInode(readLink(descriptor))) {
      inodes.insert(*inode);
    }
  });
  return inodes;
}

std::string applicationOf(const path& process) {
  const std::string executable = readLink(process / "exe");
  if (!executable.empty()) {
    return programName(executable);
  }
  std::string name = readFile(process / "comm");
  name.erase(std::min(name.find('\n'), name.size()));
  return name;
}

}  // namespace

ProcessScanner::ProcessScanner(path proc) : proc_(std::move(proc)) {}

std::vector<pid_t> ProcessScanner::allProcesses() const {
  std::vector<pid_t> processes;
  forEachName(proc_, [&](const path& entry) {
    if (const auto pid = processId(entry.filename().string())) {
      processes.push_back(*pid);
    }
  });
  std::sort(processes.begin(), processes.end());
  return processes;
}

std::vector<ProbedProcess> ProcessScanner::scan() const { return inspect(allProcesses()); }

std::vector<ProbedProcess> ProcessScanner::inspect(const std::vector<pid_t>& candidates) const {
  // A listener of another network namespace cannot be reached from here.
  const std::string ownNamespace = readLink(proc_ / "self/ns/net");
  std::optional<Listeners> listeners;
  std::vector<ProbedProcess> found;
  for (const pid_t pid : candidates) {
    const path process = proc_ / std::to_string(pid);
    if (!mayInspect(process) || !mapsNameProbe(readFile(process / "maps")) ||
        readLink(process / "ns/net") != ownNamespace) {
      continue;
    }
    const std::set<std::uint64_t> inodes = socketInodesOf(process);
    if (!listeners) {
      listeners = {loopbackListeners(readFile(proc_ / "self/net/tcp"), AddressFamily::ipv4),
                   loopbackListeners(readFile(proc_ / "self/net/tcp6"), AddressFamily::ipv6)};
    }
    found.push_back({pid, applicationOf(process), probePorts(*listeners, inodes)});
  }
  return found;
}

std::vector<pid_t> ProcessScanner::familyOf(pid_t ancestor) const {
  std::multimap<pid_t, pid_t> children;
  for (const pid_t pid : allProcesses()) {
    if (const auto stat = parseProcessStat(readFile(proc_ / std::to_string(pid) / "stat"))) {
      children.emplace(stat->parent, pid);
    }
  }
  std::vector<pid_t> family{ancestor};
  for (std::size_t index = 0; index < family.size(); ++index) {
    const auto [begin, end] = children.equal_range(family[index]);
    for (auto child = begin; child != end; ++child) {
      family.push_back(child->second);
    }
  }
  return family;
}

}  // namespace tarnix::companion
