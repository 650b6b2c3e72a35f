#include "tests/contract/linux_network_world.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <array>
#include <atomic>
#include <chrono>
#include <future>
#include <stdexcept>
#include <thread>

#include "platforms/linux/loopback_network.h"

namespace tarnix::contract {

namespace {

constexpr std::chrono::seconds patience{20};
constexpr timeval readPatience{20, 0};

}  // namespace

platform::Network& LinuxNetworkWorld::network() {
  return linux_platform::LoopbackNetwork::shared();
}

bool LinuxNetworkWorld::pumpUntil(const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) {
      return false;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

void LinuxNetworkWorld::settle() {
  // Twice around the queue, and the time in which the network delivers what it was given.
  for (int turn = 0; turn < 2; ++turn) {
    std::promise<void> done;
    network().queue().async([&done] { done.set_value(); });
    done.get_future().wait();
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
}

bool LinuxNetworkWorld::isOnQueue() {
  static std::atomic<std::thread::id> queueThread;
  if (queueThread.load() == std::thread::id()) {
    // Asked on the queue itself the answer comes too late; tests ask once before.
    network().queue().async([] { queueThread = std::this_thread::get_id(); });
  }
  return queueThread.load() == std::this_thread::get_id();
}

void LinuxNetworkWorld::peerConnects(const platform::Listener& listener) {
  peer_ = linux_platform::Descriptor(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  ::setsockopt(peer_.get(), SOL_SOCKET, SO_RCVTIMEO, &readPatience, sizeof(readPatience));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(listener.port());
  if (::connect(peer_.get(), static_cast<sockaddr*>(static_cast<void*>(&address)),
                sizeof(address)) != 0) {
    throw std::runtime_error("the listener does not take connections");
  }
}

void LinuxNetworkWorld::peerWrites(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t size = ::send(peer_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (size < 0) {
      throw std::runtime_error("the connection takes nothing");
    }
    bytes.remove_prefix(static_cast<std::size_t>(size));
  }
}

std::string LinuxNetworkWorld::peerReads(std::size_t size) {
  std::string result;
  std::array<char, 65536> buffer{};
  while (result.size() < size) {
    const ssize_t read = ::recv(peer_.get(), buffer.data(), buffer.size(), 0);
    if (read <= 0) {
      break;
    }
    result.append(buffer.data(), static_cast<std::size_t>(read));
  }
  return result;
}

void LinuxNetworkWorld::peerCloses() { peer_.close(); }

void LinuxNetworkWorld::peerBreaks() {
  // Closed without lingering, a connection is reset.
  const linger reset{1, 0};
  ::setsockopt(peer_.get(), SOL_SOCKET, SO_LINGER, &reset, sizeof(reset));
  peer_.close();
}

}  // namespace tarnix::contract
