#include "platforms/linux/socket_table.h"

#include <arpa/inet.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

namespace tarnix::linux_platform {

namespace {

template <class Number>
bool parseNumber(std::string_view text, int base, Number& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  return error == std::errc() && end == text.data() + text.size();
}

/// "0100007F:1F90": the address in groups of 32 bits, each printed as the machine's own number,
/// then the port in host byte order.
std::optional<TcpEndpoint> parseEndpoint(std::string_view text, bool& isIpv6) {
  constexpr std::size_t digitsInGroup = 8;
  const std::size_t colon = text.find(':');
  if (colon != digitsInGroup && colon != 4 * digitsInGroup) {
    return std::nullopt;
  }
  isIpv6 = colon != digitsInGroup;
  TcpEndpoint endpoint;
  for (std::size_t offset = 0; offset < colon; offset += digitsInGroup) {
    std::uint32_t group = 0;
    if (!parseNumber(text.substr(offset, digitsInGroup), 16, group)) {
      return std::nullopt;
    }
    std::memcpy(endpoint.address.data() + offset / 2, &group, sizeof(group));
  }
  std::uint16_t port = 0;
  if (!parseNumber(text.substr(colon + 1), 16, port)) {
    return std::nullopt;
  }
  endpoint.port = htons(port);
  return endpoint;
}

/// An IPv6 socket may speak IPv4; the table then shows its addresses as ::ffff:a.b.c.d.
TcpEndpoint withoutMapping(const TcpEndpoint& endpoint) {
  TcpEndpoint result;
  std::copy(endpoint.address.begin() + 12, endpoint.address.end(), result.address.begin());
  result.port = endpoint.port;
  return result;
}

bool isMapped(const TcpEndpoint& endpoint) {
  static constexpr std::array<std::uint8_t, 12> prefix{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF};
  return std::equal(prefix.begin(), prefix.end(), endpoint.address.begin());
}

}  // namespace

std::optional<SocketOwner> searchSocketTable(std::istream& table, const TcpEndpoints& endpoints) {
  std::string line;
  while (std::getline(table, line)) {
    // sl local_address rem_address st tx_queue:rx_queue tr:tm->when retrnsmt uid timeout inode
    std::array<std::string, 10> columns;
    std::istringstream words(line);
    for (std::string& column : columns) {
      words >> column;
    }
    TcpEndpoints row;
    const std::optional<TcpEndpoint> local = parseEndpoint(columns[1], row.isIpv6);
    const std::optional<TcpEndpoint> remote = parseEndpoint(columns[2], row.isIpv6);
    SocketOwner owner;
    if (!words || !local || !remote || !parseNumber(columns[7], 10, owner.user) ||
        !parseNumber(columns[9], 10, owner.inode)) {
      continue;
    }
    row.local = *local;
    row.remote = *remote;
    if (row.isIpv6 && isMapped(row.local) && isMapped(row.remote)) {
      row = {false, withoutMapping(row.local), withoutMapping(row.remote)};
    }
    if (row == endpoints) {
      return owner;
    }
  }
  return std::nullopt;
}

std::optional<SocketOwner> searchSocketTable(const TcpEndpoints& endpoints) {
  for (const char* path : {"/proc/net/tcp", "/proc/net/tcp6"}) {
    std::ifstream table(path);
    if (const std::optional<SocketOwner> owner = searchSocketTable(table, endpoints)) {
      return owner;
    }
  }
  return std::nullopt;
}

}  // namespace tarnix::linux_platform
