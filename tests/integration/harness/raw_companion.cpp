#include "tests/integration/harness/raw_companion.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>

namespace tarnix::integration {
namespace {

using Clock = std::chrono::steady_clock;

/// Whether the socket is ready for `events` before `deadline`.
bool waitFor(int socket, short events, Clock::time_point deadline) {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
  pollfd source{socket, events, 0};
  return poll(&source, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0))) == 1;
}

void setOption(int socket, int level, int option, int value) {
  setsockopt(socket, level, option, &value, sizeof value);
}

}  // namespace

RawCompanion::RawCompanion(std::uint16_t port) : RawCompanion(port, std::nullopt) {}

RawCompanion RawCompanion::withSmallBuffer(std::uint16_t port) { return RawCompanion(port, 1); }

RawCompanion::RawCompanion(std::uint16_t port, std::optional<int> receiveBuffer)
    : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  if (receiveBuffer) {
    setOption(socket_.get(), SOL_SOCKET, SO_RCVBUF, *receiveBuffer);
  }
  setOption(socket_.get(), IPPROTO_TCP, TCP_NODELAY, 1);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(port);
  isConnected_ = connect(socket_.get(), reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
}

std::optional<RawCompanion> RawCompanion::synced(std::uint16_t port) {
  return waitUntil([&]() -> std::optional<RawCompanion> {
    RawCompanion companion(port);
    const auto first = companion.receive();
    if (!first || first->type != CompanionMessageType::syncFull) {
      return std::nullopt;
    }
    // The end of an earlier companion comes within the host's next turns.
    constexpr std::chrono::milliseconds settling{300};
    if (waitFor(companion.socket_.get(), POLLIN, Clock::now() + settling)) {
      return std::nullopt;
    }
    return companion;
  });
}

bool RawCompanion::send(std::string_view bytes, Clock::duration time) {
  const auto deadline = Clock::now() + time;
  while (!bytes.empty()) {
    const ssize_t count =
        ::send(socket_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (count > 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EAGAIN || !waitFor(socket_.get(), POLLOUT, deadline)) {
      return false;
    }
  }
  return true;
}

bool RawCompanion::sendBody(std::string_view body) {
  return send(CompanionFramer::handleOutput(body).value());
}

bool RawCompanion::sendCommand(CompanionMessageType type, std::string_view payload) {
  return sendBody(
      CompanionMessage{type, std::string(payload), Timestamp{1}}.encodeEnvelope().value());
}

std::optional<CompanionMessage> RawCompanion::receive(Clock::duration time) {
  const auto deadline = Clock::now() + time;
  std::array<char, 65'536> block{};
  while (true) {
    if (const auto body = framer_.nextBody()) {
      return CompanionMessage::decodeEnvelope(*body);
    }
    if (!waitFor(socket_.get(), POLLIN, deadline)) {
      return std::nullopt;
    }
    const ssize_t count = recv(socket_.get(), block.data(), block.size(), 0);
    if (count <= 0) {
      return std::nullopt;
    }
    framer_.handleInput({block.data(), static_cast<std::size_t>(count)});
  }
}

std::optional<CompanionMessage> RawCompanion::receive(CompanionMessageType type,
                                                      Clock::duration time) {
  const auto deadline = Clock::now() + time;
  while (true) {
    auto message = receive(std::max<Clock::duration>(deadline - Clock::now(), {}));
    if (!message || message->type == type) {
      return message;
    }
  }
}

bool RawCompanion::isClosedByHost() const {
  pollfd source{socket_.get(), POLLRDHUP, 0};
  return poll(&source, 1, 0) == 1;
}

bool RawCompanion::waitForEnd() {
  const auto deadline = Clock::now() + patience;
  std::array<char, 65'536> block{};
  while (waitFor(socket_.get(), POLLIN, deadline)) {
    if (recv(socket_.get(), block.data(), block.size(), 0) <= 0) {
      return true;
    }
  }
  return false;
}

}  // namespace tarnix::integration
