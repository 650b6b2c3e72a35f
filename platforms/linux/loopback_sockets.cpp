#include "platforms/linux/loopback_sockets.h"

#include <netinet/in.h>
#include <sys/socket.h>

#include <cerrno>
#include <optional>
#include <system_error>

namespace tarnix::linux_platform {

namespace {

/// The system chooses the port for IPv4; each turn is another chance that IPv6 has it free.
constexpr int maximumTurns = 16;

struct Attempt {
  Descriptor socket;
  std::uint16_t port = 0;
  int error = 0;
};

template <class Address>
Attempt bindTo(Address address, std::uint16_t Address::*port) {
  sockaddr* const generic = static_cast<sockaddr*>(static_cast<void*>(&address));
  Attempt attempt;
  attempt.socket = Descriptor(
      ::socket(generic->sa_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, IPPROTO_TCP));
  const int only = 1;
  socklen_t size = sizeof(address);
  if (!attempt.socket.isOpen() ||
      // Without this an IPv6 socket would take IPv4 connections too.
      (generic->sa_family == AF_INET6 &&
       ::setsockopt(attempt.socket.get(), IPPROTO_IPV6, IPV6_V6ONLY, &only, sizeof(only)) != 0) ||
      ::bind(attempt.socket.get(), generic, size) != 0 ||
      ::getsockname(attempt.socket.get(), generic, &size) != 0) {
    attempt.error = errno;
    attempt.socket.close();
  }
  attempt.port = ntohs(address.*port);
  return attempt;
}

Attempt bindIpv4() {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return bindTo(address, &sockaddr_in::sin_port);
}

Attempt bindIpv6(std::uint16_t port) {
  sockaddr_in6 address{};
  address.sin6_family = AF_INET6;
  address.sin6_addr = in6addr_loopback;
  address.sin6_port = htons(port);
  return bindTo(address, &sockaddr_in6::sin6_port);
}

}  // namespace

LoopbackSockets bindLoopback() {
  LoopbackSockets sockets;
  for (int turn = 0; turn < maximumTurns; ++turn) {
    Attempt ipv4 = bindIpv4();
    Attempt ipv6 = bindIpv6(ipv4.socket.isOpen() ? ipv4.port : 0);
    sockets.ipv4 = std::move(ipv4.socket);
    sockets.ipv6 = std::move(ipv6.socket);
    if (!sockets.ipv4.isOpen() && !sockets.ipv6.isOpen()) {
      sockets.error = std::generic_category().message(ipv4.error);
      return sockets;
    }
    sockets.port = sockets.ipv4.isOpen() ? ipv4.port : ipv6.port;
    if (ipv6.error != EADDRINUSE) {
      break;
    }
  }
  return sockets;
}

}  // namespace tarnix::linux_platform
