#pragma once

#include <sys/types.h>

#include <array>
#include <cstdint>
#include <optional>

namespace tarnix::linux_platform {

/// Who holds a socket. An inode of 0 means nobody: it was closed and the system winds it up, and
/// `user` says nothing then.
struct SocketOwner {
  uid_t user = 0;
  std::uint64_t inode = 0;
};

struct TcpEndpoint {
  /// In network byte order; IPv4 addresses in the first four bytes.
  std::array<std::uint8_t, 16> address{};
  /// In network byte order.
  std::uint16_t port = 0;

  bool operator==(const TcpEndpoint&) const = default;
};

/// A TCP socket as its owner sees it.
struct TcpEndpoints {
  bool isIpv6 = false;
  TcpEndpoint local;
  TcpEndpoint remote;

  bool operator==(const TcpEndpoints&) const = default;
};

/// The socket at the other end of the connected socket `descriptor`, both ends being on this
/// machine. Nothing when the connection is gone.
std::optional<TcpEndpoints> peerEndpoints(int descriptor);

}  // namespace tarnix::linux_platform
