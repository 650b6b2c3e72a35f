#include <arpa/inet.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <ctime>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platforms/linux/descriptor.h"
#include "platforms/linux/loopback_network.h"
#include "probe/platform/listener.h"
#include "tests/contract/events.h"
#include "tests/contract/fake_network_world.h"
#include "tests/contract/linux_network_world.h"

namespace tarnix::contract {
namespace {

using linux_platform::Descriptor;
using platform::Connection;
using platform::Listener;
using platform::ListenerState;

template <class World>
class NetworkListenerTest : public testing::Test {
 protected:
  void SetUp() override { open({}); }

  void TearDown() override {
    listener.reset();
    world.settle();
    const std::lock_guard lock(mutex);
    for (const std::shared_ptr<Connection>& connection : connections) {
      connection->cancel();
    }
  }

  void open(const platform::TcpParameters& parameters) {
    world.isOnQueue();
    platform::ListenerResult result = world.network().makeListener(parameters);
    ASSERT_NE(result.listener, nullptr) << result.error;
    listener = std::move(result.listener);
    listener->setStateHandler([this](ListenerState state) {
      events.add(state == ListenerState::ready    ? "ready"
                 : state == ListenerState::failed ? "failed"
                                                  : "cancelled");
      events.add(world.isOnQueue() ? "on queue" : "off queue");
    });
    listener->setNewConnectionHandler([this](std::shared_ptr<Connection> connection) {
      const std::lock_guard lock(mutex);
      connections.push_back(std::move(connection));
      events.add("connection");
    });
  }

  void start() {
    world.start(*listener);
    ASSERT_TRUE(waitFor("ready"));
  }

  bool waitFor(const std::string& event, std::size_t count = 1) {
    return world.pumpUntil([&] { return events.count(event) >= count; });
  }

  World world;
  Events events;
  std::mutex mutex;
  std::vector<std::shared_ptr<Connection>> connections;
  std::unique_ptr<Listener> listener;
};

using Worlds = testing::Types<FakeNetworkWorld, LinuxNetworkWorld>;
TYPED_TEST_SUITE(NetworkListenerTest, Worlds);

TYPED_TEST(NetworkListenerTest, IsReadyAfterStartOnAPortOfItsOwn) {
  EXPECT_NE(this->listener->port(), 0);
  this->start();
  this->world.settle();
  EXPECT_EQ(this->events.all(), (std::vector<std::string>{"ready", "on queue"}));
}

TYPED_TEST(NetworkListenerTest, HandsOverEachConnection) {
  this->start();
  this->world.peerConnects(*this->listener);
  ASSERT_TRUE(this->waitFor("connection"));
  this->world.peerConnects(*this->listener);
  ASSERT_TRUE(this->waitFor("connection", 2));
  EXPECT_NE(this->connections[0], this->connections[1]);
}

sockaddr_in ipv4Address(std::uint16_t port, std::uint32_t host = INADDR_LOOPBACK) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(host);
  address.sin_port = htons(port);
  return address;
}

sockaddr_in6 ipv6Address(std::uint16_t port, const char* text = "::1") {
  sockaddr_in6 address{};
  address.sin6_family = AF_INET6;
  inet_pton(AF_INET6, text, &address.sin6_addr);
  address.sin6_port = htons(port);
  return address;
}

template <class Address>
Descriptor connectTo(Address address) {
  sockaddr* const generic = static_cast<sockaddr*>(static_cast<void*>(&address));
  Descriptor socket(::socket(generic->sa_family, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (::connect(socket.get(), generic, sizeof(address)) != 0) {
    socket.close();
  }
  return socket;
}

/// Whether the other end closes within a bound.
bool isClosedByPeer(int socket) {
  const timeval patience{10, 0};
  ::setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof(patience));
  char byte = 0;
  const ssize_t size = ::recv(socket, &byte, 1, 0);
  return size == 0 || (size < 0 && errno == ECONNRESET);
}

class LinuxListenerTest : public NetworkListenerTest<LinuxNetworkWorld> {};

TEST_F(LinuxListenerTest, AcceptsNothingBeforeItIsStarted) {
  EXPECT_FALSE(connectTo(ipv4Address(listener->port())).isOpen());
}

TEST_F(LinuxListenerTest, ListensOnBothLoopbackAddressesAtTheSamePort) {
  start();
  const Descriptor ipv4 = connectTo(ipv4Address(listener->port()));
  const Descriptor ipv6 = connectTo(ipv6Address(listener->port()));
  EXPECT_TRUE(ipv4.isOpen());
  EXPECT_TRUE(ipv6.isOpen());
  EXPECT_TRUE(waitFor("connection", 2));
}

TEST_F(LinuxListenerTest, ListensOnNoOtherAddress) {
  start();
  EXPECT_FALSE(connectTo(ipv4Address(listener->port(), 0x7F000002)).isOpen());
}

TEST_F(LinuxListenerTest, KnowsPeersOnAnIpv6SocketThatSpeaksIpv4) {
  start();
  const Descriptor peer = connectTo(ipv6Address(listener->port(), "::ffff:127.0.0.1"));
  ASSERT_TRUE(peer.isOpen());
  EXPECT_TRUE(waitFor("connection"));
}

TEST_F(LinuxListenerTest, CancelEndsListeningButNotTheConnections) {
  start();
  const Descriptor peer = connectTo(ipv4Address(listener->port()));
  ASSERT_TRUE(waitFor("connection"));
  listener->cancel();
  listener->cancel();
  ASSERT_TRUE(waitFor("cancelled"));
  EXPECT_FALSE(connectTo(ipv4Address(listener->port())).isOpen());
  EXPECT_FALSE(connectTo(ipv6Address(listener->port())).isOpen());
  connections[0]->start();
  connections[0]->send("x", [this](std::optional<platform::NetworkError> error) {
    events.add(error ? "send failed" : "sent");
  });
  EXPECT_TRUE(waitFor("sent"));
  EXPECT_EQ(events.count("cancelled"), 1U);
}

TEST_F(LinuxListenerTest, SaysNothingOnceItIsDestroyed) {
  start();
  const std::uint16_t port = listener->port();
  listener.reset();
  world.settle();
  EXPECT_FALSE(connectTo(ipv4Address(port)).isOpen());
  EXPECT_FALSE(events.has("cancelled"));
}

TEST_F(LinuxListenerTest, HandsItsSocketsToNoProgramThatTheHostRuns) {
  start();
  const Descriptor peer = connectTo(ipv4Address(listener->port()));
  ASSERT_TRUE(waitFor("connection"));
  // What is open without close-on-exec is in the child: the three standard streams, and what the
  // test runner itself left open.
  for (int descriptor = 3; descriptor < 256; ++descriptor) {
    sockaddr_storage address{};
    socklen_t size = sizeof(address);
    if (::getsockname(descriptor, static_cast<sockaddr*>(static_cast<void*>(&address)), &size) ==
            0 &&
        (address.ss_family == AF_INET || address.ss_family == AF_INET6)) {
      EXPECT_TRUE((::fcntl(descriptor, F_GETFD) & FD_CLOEXEC) != 0) << descriptor;
    }
  }
}

TEST_F(LinuxListenerTest, AppliesTheKeepAliveThatWasAskedFor) {
  open({true, std::chrono::seconds(5)});
  start();
  const Descriptor peer = connectTo(ipv4Address(listener->port()));
  ASSERT_TRUE(waitFor("connection"));
  int found = 0;
  for (int descriptor = 3; descriptor < 256; ++descriptor) {
    int enabled = 0;
    int idle = 0;
    int noDelay = 1;
    socklen_t size = sizeof(int);
    if (::getsockopt(descriptor, SOL_SOCKET, SO_KEEPALIVE, &enabled, &size) == 0 && enabled != 0 &&
        ::getsockopt(descriptor, IPPROTO_TCP, TCP_KEEPIDLE, &idle, &size) == 0 && idle == 5 &&
        ::getsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &noDelay, &size) == 0 && noDelay == 0) {
      ++found;
    }
  }
  EXPECT_EQ(found, 1);
}

TEST_F(LinuxListenerTest, AcceptsAgainWhenAShortageOfDescriptorsHasPassed) {
  start();
  // The first connection that a listener accepts loads what later ones only use.
  const Descriptor first = connectTo(ipv4Address(listener->port()));
  ASSERT_TRUE(waitFor("connection"));
  Descriptor waiting(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  rlimit previous{};
  getrlimit(RLIMIT_NOFILE, &previous);
  rlimit none = previous;
  none.rlim_cur = 3;
  setrlimit(RLIMIT_NOFILE, &none);
  sockaddr_in address = ipv4Address(listener->port());
  const int connected = ::connect(
      waiting.get(), static_cast<sockaddr*>(static_cast<void*>(&address)), sizeof(address));
  const std::clock_t before = std::clock();
  world.settle();
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  const std::clock_t spent = std::clock() - before;
  setrlimit(RLIMIT_NOFILE, &previous);
  ASSERT_EQ(connected, 0);
  EXPECT_EQ(events.count("connection"), 1U);
  EXPECT_LT(spent, CLOCKS_PER_SEC / 10) << "waiting for descriptors keeps a processor busy";
  EXPECT_TRUE(waitFor("connection", 2));
  EXPECT_FALSE(events.has("failed"));
}

TEST_F(LinuxListenerTest, ClosesConnectionsOfOtherUsers) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "only root can act as another user";
  }
  start();
  for (const bool usesIpv6 : {false, true}) {
    const pid_t child = fork();
    if (child == 0) {
      constexpr uid_t nobody = 65534;
      const std::uint16_t port = listener->port();
      if (setresuid(nobody, nobody, nobody) != 0) {
        _exit(2);
      }
      const Descriptor peer =
          usesIpv6 ? connectTo(ipv6Address(port)) : connectTo(ipv4Address(port));
      _exit(isClosedByPeer(peer.get()) ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
  }
  world.settle();
  EXPECT_FALSE(events.has("connection"));
}

}  // namespace
}  // namespace tarnix::contract
