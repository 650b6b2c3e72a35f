#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "probe/link/companion_framer.h"
#include "probe/link/companion_message.h"
#include "tests/companion/socket_descriptor.h"
#include "tests/integration/harness/wait_until.h"

namespace tarnix::integration {

/// A peer that sends what it likes, byte for byte, for tests of what a host makes of it.
class RawCompanion {
 public:
  explicit RawCompanion(std::uint16_t port);
  /// With a receive buffer as small as the system allows, so that the host's sends pile up soon.
  static RawCompanion withSmallBuffer(std::uint16_t port);
  /// Connects until the full sync has come: an earlier companion's end may end this one, too.
  static std::optional<RawCompanion> synced(std::uint16_t port);

  bool isConnected() const { return isConnected_; }

  /// Waits while the host takes nothing, no longer than `time`. False when not all was taken.
  bool send(std::string_view bytes, std::chrono::steady_clock::duration time = patience);
  bool sendBody(std::string_view body);
  bool sendCommand(CompanionMessageType type, std::string_view payload = "{}");

  /// The next message; nothing when the host has closed or none came in time.
  std::optional<CompanionMessage> receive(std::chrono::steady_clock::duration time = patience);
  /// The next message of that type; others are passed over.
  std::optional<CompanionMessage> receive(CompanionMessageType type,
                                          std::chrono::steady_clock::duration time = patience);
  /// Whether the host has closed, told without reading anything.
  bool isClosedByHost() const;
  /// Reads until the host closes.
  bool waitForEnd();

 private:
  RawCompanion(std::uint16_t port, std::optional<int> receiveBuffer);

  companion::SocketDescriptor socket_;
  bool isConnected_ = false;
  CompanionFramer framer_;
};

}  // namespace tarnix::integration
