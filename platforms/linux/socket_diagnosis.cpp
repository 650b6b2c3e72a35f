#include "platforms/linux/socket_diagnosis.h"

#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "platforms/linux/descriptor.h"

namespace tarnix::linux_platform {

namespace {

struct Request {
  nlmsghdr header;
  inet_diag_req_v2 body;
};

Request makeRequest(const TcpEndpoints& endpoints) {
  Request request{};
  request.header.nlmsg_len = sizeof(request);
  request.header.nlmsg_type = SOCK_DIAG_BY_FAMILY;
  request.header.nlmsg_flags = NLM_F_REQUEST;
  request.body.sdiag_family = endpoints.isIpv6 ? AF_INET6 : AF_INET;
  request.body.sdiag_protocol = IPPROTO_TCP;
  request.body.idiag_states = ~0U;
  inet_diag_sockid& socket = request.body.id;
  socket.idiag_sport = endpoints.local.port;
  socket.idiag_dport = endpoints.remote.port;
  std::memcpy(socket.idiag_src, endpoints.local.address.data(), sizeof(socket.idiag_src));
  std::memcpy(socket.idiag_dst, endpoints.remote.address.data(), sizeof(socket.idiag_dst));
  socket.idiag_cookie[0] = INET_DIAG_NOCOOKIE;
  socket.idiag_cookie[1] = INET_DIAG_NOCOOKIE;
  return request;
}

/// The kernel fills in the endpoints of what it found; a wildcard match (a listening socket) is
/// not what was asked for.
bool isExactMatch(const inet_diag_msg& found, const Request& request) {
  return found.id.idiag_sport == request.body.id.idiag_sport &&
         found.id.idiag_dport == request.body.id.idiag_dport;
}

}  // namespace

std::optional<SocketOwner> askSocketDiagnosis(const TcpEndpoints& endpoints) {
  const Descriptor netlink(
      ::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_SOCK_DIAG));
  if (!netlink.isOpen()) {
    return std::nullopt;
  }
  const Request request = makeRequest(endpoints);
  sockaddr_nl kernel{};
  kernel.nl_family = AF_NETLINK;
  if (::sendto(netlink.get(), &request, sizeof(request), MSG_NOSIGNAL,
               static_cast<const sockaddr*>(static_cast<const void*>(&kernel)),
               sizeof(kernel)) != static_cast<ssize_t>(sizeof(request))) {
    return std::nullopt;
  }
  // The kernel answers inside the call that sends: what is to come is there.
  alignas(nlmsghdr) std::array<char, 8192> answer{};
  ssize_t size = 0;
  do {
    size = ::recv(netlink.get(), answer.data(), answer.size(), MSG_DONTWAIT);
  } while (size < 0 && errno == EINTR);
  nlmsghdr header{};
  inet_diag_msg found{};
  if (size < static_cast<ssize_t>(NLMSG_HDRLEN + sizeof(found))) {
    return std::nullopt;
  }
  std::memcpy(&header, answer.data(), sizeof(header));
  std::memcpy(&found, answer.data() + NLMSG_HDRLEN, sizeof(found));
  if (header.nlmsg_type != SOCK_DIAG_BY_FAMILY || !isExactMatch(found, request)) {
    return std::nullopt;
  }
  return SocketOwner{found.idiag_uid, found.idiag_inode};
}

}  // namespace tarnix::linux_platform
