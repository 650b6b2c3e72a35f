#include "platforms/linux/peer_user.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <optional>
#include <sstream>

#include "platforms/linux/descriptor.h"
#include "platforms/linux/socket_diagnosis.h"
#include "platforms/linux/socket_table.h"
#include "platforms/linux/tcp_endpoints.h"

namespace tarnix::linux_platform {
namespace {

/// Both ends of a connection within this process.
struct Pair {
  Descriptor peer;
  Descriptor accepted;
};

template <class Address>
Pair connectedPair(Address bound, int peerFamily) {
  Pair pair;
  sockaddr* const generic = static_cast<sockaddr*>(static_cast<void*>(&bound));
  const Descriptor listener(socket(generic->sa_family, SOCK_STREAM | SOCK_CLOEXEC, 0));
  socklen_t size = sizeof(bound);
  EXPECT_EQ(bind(listener.get(), generic, size), 0);
  EXPECT_EQ(listen(listener.get(), 1), 0);
  EXPECT_EQ(getsockname(listener.get(), generic, &size), 0);
  pair.peer = Descriptor(socket(peerFamily, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (peerFamily == generic->sa_family) {
    EXPECT_EQ(connect(pair.peer.get(), generic, size), 0);
  } else {
    sockaddr_in6 mapped{};
    mapped.sin6_family = AF_INET6;
    inet_pton(AF_INET6, "::ffff:127.0.0.1", &mapped.sin6_addr);
    mapped.sin6_port = static_cast<sockaddr_in*>(static_cast<void*>(&bound))->sin_port;
    EXPECT_EQ(connect(pair.peer.get(), static_cast<sockaddr*>(static_cast<void*>(&mapped)),
                      sizeof(mapped)),
              0);
  }
  pair.accepted = Descriptor(accept4(listener.get(), nullptr, nullptr, SOCK_CLOEXEC));
  return pair;
}

enum class Route { ipv4, ipv6, ipv4FromIpv6Socket };

Pair connectedPair(Route route) {
  if (route == Route::ipv6) {
    sockaddr_in6 address{};
    address.sin6_family = AF_INET6;
    address.sin6_addr = in6addr_loopback;
    return connectedPair(address, AF_INET6);
  }
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return connectedPair(address, route == Route::ipv4 ? AF_INET : AF_INET6);
}

class PeerUserTest : public testing::TestWithParam<Route> {};

INSTANTIATE_TEST_SUITE_P(Routes, PeerUserTest,
                         testing::Values(Route::ipv4, Route::ipv6, Route::ipv4FromIpv6Socket));

TEST_P(PeerUserTest, TrustsAPeerOfTheSameUser) {
  const Pair pair = connectedPair(GetParam());
  EXPECT_TRUE(isPeerTrusted(pair.accepted.get()));
}

TEST_P(PeerUserTest, TrustsNoPeerThatHasClosedItsSocket) {
  Pair pair = connectedPair(GetParam());
  pair.peer.close();
  EXPECT_FALSE(isPeerTrusted(pair.accepted.get()));
}

TEST_P(PeerUserTest, FindsTheSameOwnerInBothOfTheKernelsInterfaces) {
  const Pair pair = connectedPair(GetParam());
  const std::optional<TcpEndpoints> endpoints = peerEndpoints(pair.accepted.get());
  ASSERT_TRUE(endpoints);
  const std::optional<SocketOwner> fromTable = searchSocketTable(*endpoints);
  ASSERT_TRUE(fromTable);
  EXPECT_EQ(fromTable->user, geteuid());
  EXPECT_NE(fromTable->inode, 0U);
  const std::optional<SocketOwner> fromDiagnosis = askSocketDiagnosis(*endpoints);
  ASSERT_TRUE(fromDiagnosis);
  EXPECT_EQ(fromDiagnosis->user, fromTable->user);
  EXPECT_EQ(fromDiagnosis->inode, fromTable->inode);
}

TEST(PeerTest, TrustsNothingThatIsNoConnection) {
  const Descriptor unconnected(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  EXPECT_FALSE(isPeerTrusted(unconnected.get()));
  EXPECT_FALSE(isPeerTrusted(-1));
}

TEST(SocketTableTest, PassesOverLinesThatItCannotRead) {
  TcpEndpoints endpoints;
  endpoints.local = {{127, 0, 0, 1}, htons(0xBEEF)};
  endpoints.remote = {{127, 0, 0, 1}, htons(0x1F90)};
  std::istringstream table(
      "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid\n"
      "\n"
      "   0: 0100007F 0100007F:1F90 01 0:0 0:0 0 1000 0 1\n"
      "   1: 0100007F:BEEF 0100007F:1F90 01\n"
      "   2: 0100007F:BEEF 0100007F:1F91 01 00000000:00000000 00:00000000 00000000 1 0 11 1\n"
      "   3: 0100007F:BEEF 0100007F:1F90 01 00000000:00000000 00:00000000 00000000 x 0 22 1\n"
      "   4: 0100007F:BEEF 0100007F:1F90 01 00000000:00000000 00:00000000 00000000 7 0 33 1\n");
  const std::optional<SocketOwner> owner = searchSocketTable(table, endpoints);
  ASSERT_TRUE(owner);
  EXPECT_EQ(owner->user, 7U);
  EXPECT_EQ(owner->inode, 33U);
}

}  // namespace
}  // namespace tarnix::linux_platform
