#include "companion/discovery/proc_text.h"

#include <array>
#include <charconv>

namespace tarnix::companion {
namespace {

constexpr std::string_view removedMark = " (deleted)";

template <class Number>
std::optional<Number> parseNumber(std::string_view text, int base = 10) {
  Number number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  if (error != std::errc() || end != text.data() + text.size()) {
    return std::nullopt;
  }
  return number;
}

/// Takes the text up to the next line feed off `rest`.
std::string_view takeLine(std::string_view& rest) {
  const std::size_t end = rest.find('\n');
  const std::string_view line = rest.substr(0, end);
  rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  return line;
}

/// Takes the next word off `rest`; empty when there is none.
std::string_view takeWord(std::string_view& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
  const std::size_t end = std::min(rest.find(' '), rest.size());
  const std::string_view word = rest.substr(0, end);
  rest.remove_prefix(end);
  return word;
}

std::string_view withoutRemovedMark(std::string_view path) {
  if (path.ends_with(removedMark)) {
    path.remove_suffix(removedMark.size());
  }
  return path;
}

std::optional<ListeningSocket> parseListener(std::string_view line, std::string_view loopback) {
  constexpr std::string_view listening = "0A";
  // sl, local address, remote address, state, queues, timer, retransmissions, user, timeout, inode
  std::array<std::string_view, 10> words;
  for (std::string_view& word : words) {
    word = takeWord(line);
  }
  const std::string_view address = words[1];
  if (words[3] != listening || !address.starts_with(loopback) ||
      address.size() <= loopback.size() || address[loopback.size()] != ':') {
    return std::nullopt;
  }
  const auto port = parseNumber<std::uint16_t>(address.substr(loopback.size() + 1), 16);
  const auto inode = parseNumber<std::uint64_t>(words[9]);
  if (!port || !inode) {
    return std::nullopt;
  }
  return ListeningSocket{*port, *inode};
}

}  // namespace

bool mapsNameProbe(std::string_view maps) {
  while (!maps.empty()) {
    const std::string_view line = withoutRemovedMark(takeLine(maps));
    if (line.ends_with(probeCoreLibrary) && line.size() > probeCoreLibrary.size() &&
        line[line.size() - probeCoreLibrary.size() - 1] == '/') {
      return true;
    }
  }
  return false;
}

std::optional<std::uint64_t> socketInode(std::string_view link) {
  constexpr std::string_view start = "socket:[";
  if (!link.starts_with(start) || !link.ends_with(']')) {
    return std::nullopt;
  }
  return parseNumber<std::uint64_t>(link.substr(start.size(), link.size() - start.size() - 1));
}

std::vector<ListeningSocket> loopbackListeners(std::string_view table, AddressFamily family) {
  // Addresses are printed as 32-bit words in the machine's own byte order.
  constexpr std::string_view ipv4Loopback = "0100007F";
  constexpr std::string_view ipv6Loopback = "00000000000000000000000001000000";
  const std::string_view loopback = family == AddressFamily::ipv4 ? ipv4Loopback : ipv6Loopback;
  std::vector<ListeningSocket> listeners;
  while (!table.empty()) {
    if (const auto listener = parseListener(takeLine(table), loopback)) {
      listeners.push_back(*listener);
    }
  }
  return listeners;
}

std::optional<ProcessStat> parseProcessStat(std::string_view stat) {
  const std::size_t nameEnd = stat.rfind(')');
  if (nameEnd == std::string_view::npos) {
    return std::nullopt;
  }
  std::string_view rest = stat.substr(nameEnd + 1);
  takeWord(rest);  // state
  const auto parent = parseNumber<int>(takeWord(rest));
  // From the process group to the time of the next alarm.
  constexpr int fieldsBetween = 17;
  for (int field = 0; field < fieldsBetween; ++field) {
    takeWord(rest);
  }
  const auto startTime = parseNumber<std::uint64_t>(takeWord(rest));
  if (!parent || !startTime) {
    return std::nullopt;
  }
  return ProcessStat{*parent, *startTime};
}

std::string programName(std::string_view executable) {
  executable = withoutRemovedMark(executable);
  const std::size_t slash = executable.rfind('/');
  return std::string(slash == std::string_view::npos ? executable : executable.substr(slash + 1));
}

}  // namespace tarnix::companion
