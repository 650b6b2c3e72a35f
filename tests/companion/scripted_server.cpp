#include "tests/companion/scripted_server.h"

#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <utility>

#include "probe/model/full_sync_payload.h"

namespace tarnix::companion {

void ScriptedPeer::sendBytes(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count <= 0) {
      return;
    }
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

void ScriptedPeer::sendBytesOneByOne(std::string_view bytes, std::chrono::milliseconds pause) {
  for (const char& byte : bytes) {
    sendBytes({&byte, 1});
    std::this_thread::sleep_for(pause);
  }
}

void ScriptedPeer::sendBody(std::string_view body) {
  sendBytes(CompanionFramer::handleOutput(body).value());
}

void ScriptedPeer::send(CompanionMessageType type, std::string_view payload) {
  sendBody(CompanionMessage{type, std::string(payload), Timestamp{1}}.encodeEnvelope().value());
}

void ScriptedPeer::sendFullSync(std::string_view appName) {
  send(CompanionMessageType::syncFull, fullSyncJson(appName));
}

std::optional<CompanionMessage> ScriptedPeer::receive() {
  std::array<char, 4096> block{};
  while (true) {
    if (const auto body = framer_.nextBody()) {
      return CompanionMessage::decodeEnvelope(*body);
    }
    const ssize_t count = recv(descriptor_, block.data(), block.size(), 0);
    if (count <= 0) {
      return std::nullopt;
    }
    framer_.handleInput({block.data(), static_cast<std::size_t>(count)});
  }
}

void ScriptedPeer::waitForEnd() {
  std::array<char, 4096> block{};
  while (recv(descriptor_, block.data(), block.size(), 0) > 0) {
  }
}

std::string fullSyncJson(std::string_view appName) {
  FullSyncPayload sync;
  sync.appName = appName;
  sync.appVersion = "1.0 (7)";
  sync.deviceName = "bench";
  sync.currentScreen = "Unknown";
  return encodeJson(sync).value();
}

ScriptedServer::ScriptedServer(std::vector<Script> scripts)
    : scripts_(std::move(scripts)), listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  bind(listener_.get(), generic, size);
  listen(listener_.get(), SOMAXCONN);
  getsockname(listener_.get(), generic, &size);
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { serve(); });
}

ScriptedServer::~ScriptedServer() {
  isEnding_ = true;
  shutdown(listener_.get(), SHUT_RDWR);
  // Ends a script that waits for its companion.
  if (const int current = current_; current >= 0) {
    shutdown(current, SHUT_RDWR);
  }
  thread_.join();
}

void ScriptedServer::serve() {
  while (!isEnding_) {
    const SocketDescriptor connection(accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC));
    if (connection.get() < 0) {
      return;
    }
    current_ = connection.get();
    const auto index = static_cast<std::size_t>(connectionCount_++);
    ScriptedPeer peer(connection.get());
    scripts_[std::min(index, scripts_.size() - 1)](peer);
    current_ = -1;
  }
}

}  // namespace tarnix::companion
