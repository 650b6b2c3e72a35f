#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Reads what the kernel says of processes and sockets in text under /proc.
namespace tarnix::companion {

/// The library that a process has mapped exactly when a probe runs in it.
inline constexpr std::string_view probeCoreLibrary = "libtarnixprobe-core.so";

/// Whether a line of /proc/PID/maps names the probe's core, also when its file has been replaced
/// or removed since.
bool mapsNameProbe(std::string_view maps);

/// The inode that a link in /proc/PID/fd names, as in "socket:[4711]"; nothing for other links.
std::optional<std::uint64_t> socketInode(std::string_view link);

struct ListeningSocket {
  std::uint16_t port = 0;
  std::uint64_t inode = 0;

  bool operator==(const ListeningSocket&) const = default;
};

enum class AddressFamily { ipv4, ipv6 };

/// The sockets of /proc/PID/net/tcp or tcp6 that listen on 127.0.0.1 or ::1. Lines that cannot be
/// read are passed over.
std::vector<ListeningSocket> loopbackListeners(std::string_view table, AddressFamily family);

/// What /proc/PID/stat says.
struct ProcessStat {
  int parent = 0;
  /// In clock ticks since the machine started; with the process id it names a process for good.
  std::uint64_t startTime = 0;
};

/// Nothing when `stat` is cut short. The program's name in it may hold any character.
std::optional<ProcessStat> parseProcessStat(std::string_view stat);

/// The last part of a path, without the mark of a file that has been removed.
std::string programName(std::string_view executable);

}  // namespace tarnix::companion
