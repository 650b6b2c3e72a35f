#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "probe/link/companion_framer.h"
#include "probe/link/companion_message.h"
#include "tests/companion/socket_descriptor.h"

namespace tarnix::companion {

/// One connection, from the side of a host that does as a test says.
class ScriptedPeer {
 public:
  explicit ScriptedPeer(int descriptor) : descriptor_(descriptor) {}

  void sendBytes(std::string_view bytes);
  void sendBytesOneByOne(std::string_view bytes, std::chrono::milliseconds pause);
  void sendBody(std::string_view body);
  void send(CompanionMessageType type, std::string_view payload);
  /// A full sync of an application with that name.
  void sendFullSync(std::string_view appName = "Scripted");

  /// The next message of the companion; nothing when it has gone.
  std::optional<CompanionMessage> receive();
  /// Reads on until the companion goes.
  void waitForEnd();

 private:
  int descriptor_;
  CompanionFramer framer_;
};

/// The JSON text of a full sync of an application with that name.
std::string fullSyncJson(std::string_view appName);

/// Listens on the loopback address and plays one script a connection, one after the other; the last
/// one is played again for every further connection. A script's end closes its connection.
class ScriptedServer {
 public:
  using Script = std::function<void(ScriptedPeer&)>;

  explicit ScriptedServer(std::vector<Script> scripts);
  ~ScriptedServer();

  std::uint16_t port() const { return port_; }
  int connectionCount() const { return connectionCount_; }

 private:
  void serve();

  std::vector<Script> scripts_;
  SocketDescriptor listener_;
  std::uint16_t port_ = 0;
  std::atomic<int> connectionCount_ = 0;
  std::atomic<int> current_ = -1;
  std::atomic<bool> isEnding_ = false;
  std::thread thread_;
};

}  // namespace tarnix::companion
