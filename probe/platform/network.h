#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "probe/platform/listener.h"
#include "probe/platform/serial_queue.h"

namespace tarnix::platform {

/// What is asked of each accepted connection; everything that is not named keeps the system's
/// default.
struct TcpParameters {
  bool enableKeepalive = false;
  /// How long a connection is silent before the system asks whether the peer is there.
  std::chrono::seconds keepaliveIdle{0};
};

/// Either a listener, or why there is none.
struct ListenerResult {
  std::unique_ptr<Listener> listener;
  std::string error;
};

/// Where listeners come from, and the one thread that serves them and their connections.
class Network {
 public:
  virtual ~Network() = default;

  /// Binds the loopback addresses on a port of the system's choice; accepts nothing before `start`.
  virtual ListenerResult makeListener(const TcpParameters& parameters) = 0;

  /// The queue on which every handler and completion of the network runs.
  virtual SerialQueue& queue() = 0;
};

}  // namespace tarnix::platform
