#include "platforms/linux/tcp_endpoints.h"

#include <netinet/in.h>
#include <sys/socket.h>

#include <cstring>

namespace tarnix::linux_platform {

namespace {

using NameFunction = int (*)(int, sockaddr*, socklen_t*);

std::optional<TcpEndpoint> endpoint(NameFunction name, int descriptor, bool& isIpv6) {
  sockaddr_storage storage{};
  socklen_t size = sizeof(storage);
  if (name(descriptor, static_cast<sockaddr*>(static_cast<void*>(&storage)), &size) != 0) {
    return std::nullopt;
  }
  TcpEndpoint result;
  isIpv6 = storage.ss_family == AF_INET6;
  if (isIpv6) {
    sockaddr_in6 address{};
    std::memcpy(&address, &storage, sizeof(address));
    std::memcpy(result.address.data(), &address.sin6_addr, sizeof(address.sin6_addr));
    result.port = address.sin6_port;
    return result;
  }
  if (storage.ss_family != AF_INET) {
    return std::nullopt;
  }
  sockaddr_in address{};
  std::memcpy(&address, &storage, sizeof(address));
  std::memcpy(result.address.data(), &address.sin_addr, sizeof(address.sin_addr));
  result.port = address.sin_port;
  return result;
}

}  // namespace

std::optional<TcpEndpoints> peerEndpoints(int descriptor) {
  bool isIpv6 = false;
  const std::optional<TcpEndpoint> remote = endpoint(::getsockname, descriptor, isIpv6);
  const std::optional<TcpEndpoint> local = endpoint(::getpeername, descriptor, isIpv6);
  if (!remote || !local) {
    return std::nullopt;
  }
  return TcpEndpoints{isIpv6, *local, *remote};
}

}  // namespace tarnix::linux_platform
