#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>

#include "probe/link/capture_installers.h"
#include "probe/link/companion_connection.h"
#include "probe/link/companion_message.h"
#include "probe/link/waiting_connections.h"
#include "probe/platform/main_queue.h"
#include "probe/platform/network.h"

namespace tarnix {

/// The probe's one endpoint: listens, serves one companion at a time, and starts what is captured.
///
/// Main thread, all of it: every callback of the network hops there before it touches the server,
/// in order. The newest companion wins. Events of a connection are not told apart by connection: a
/// loss, whichever connection it comes from, ends the one that is active at that moment. So a
/// companion that replaces another is dropped again when the end of the other arrives, and connects
/// once more; companions count on being able to.
class ProbeServer : public std::enable_shared_from_this<ProbeServer> {
 public:
  /// Ordinary messages that may be on their way at once. What comes beyond is dropped, so that a
  /// companion that does not read costs the host no memory.
  static constexpr std::int64_t maxPendingSends = 64;
  static constexpr std::chrono::seconds heartbeatInterval{5};
  /// From a listener's failure to the next start.
  static constexpr std::chrono::seconds restartDelay{2};
  static constexpr const char* readyMarkerPath = "/tmp/tarnprobe_ready";

  /// The server of the process, made on first use and never destroyed.
  static ProbeServer& shared();
  /// For tests, which put one of their own in the place.
  static void setShared(std::shared_ptr<ProbeServer> server);

  /// Held by a shared pointer.
  explicit ProbeServer(std::span<const CaptureInstaller> installers = captureInstallers());
  ~ProbeServer();

  /// Listens, installs the captures and writes the ready marker. Nothing while a listener exists.
  void start();

  /// Whether a companion is connected. Any thread; by the time the answer arrives it may be
  /// another.
  bool isConnected() const { return isConnected_; }

  /// Whether `send` would take a message of this type now.
  bool hasRoom(CompanionMessageType type) const;

  /// Hands a message to the companion. Dropped without a trace while none is connected, and when
  /// `maxPendingSends` are on their way; heartbeats and full syncs pass that bound.
  void send(CompanionMessage message);

 private:
  /// Runs `step` on the main thread, if there still is a server then. Steps of one thread run in
  /// the order in which they were given. No exception leaves a step: it would end the host.
  template <class Step>
  static void onMain(std::weak_ptr<ProbeServer> weakServer, Step step);

  void handleListenerState(platform::ListenerState state);
  void handleNewConnection(std::shared_ptr<platform::Connection> connection);
  void handleConnectionState(platform::ConnectionState state);
  void sendFullSync();
  void receiveNextMessage();
  void handleReceived(const std::optional<CompanionMessage>& message,
                      const std::optional<CompanionError>& error);
  void startHeartbeat();
  void sendHeartbeat();
  void handleSent(const std::optional<CompanionError>& error);
  void handleConnectionLost();

  const std::span<const CaptureInstaller> installers_;
  /// Shared with the network's queue, which adds to them.
  const std::shared_ptr<WaitingConnections> waitingConnections_ =
      std::make_shared<WaitingConnections>();
  std::unique_ptr<platform::Listener> listener_;
  std::shared_ptr<CompanionConnection> activeConnection_;
  std::unique_ptr<platform::Timer> heartbeatTimer_;
  /// Messages handed to the connection whose completion has not come back.
  std::int64_t pendingSendCount_ = 0;
  /// From the connection's ready state until it is lost.
  std::atomic<bool> isConnected_ = false;
};

}  // namespace tarnix
