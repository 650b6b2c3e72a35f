#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "platforms/linux/connection_acceptor.h"
#include "platforms/linux/loopback_sockets.h"
#include "platforms/linux/service_advertisement.h"
#include "probe/platform/listener.h"
#include "probe/platform/network.h"

namespace tarnix::linux_platform {

class ServerThread;

/// The part of a listener that lives on the server thread. The setters are called before `start`,
/// from whichever thread starts the listener.
class LoopbackAcceptance : public std::enable_shared_from_this<LoopbackAcceptance> {
 public:
  LoopbackAcceptance(ServerThread& thread, LoopbackSockets sockets,
                     const platform::TcpParameters& parameters);

  void setService(platform::Service service) { service_ = std::move(service); }
  void setStateHandler(platform::Listener::StateHandler handler) {
    stateHandler_ = std::move(handler);
  }
  void setNewConnectionHandler(platform::Listener::NewConnectionHandler handler) {
    newConnectionHandler_ = std::move(handler);
  }

  void start();

  void cancel();

  /// As `cancel`, without a word.
  void abandon();

 private:
  enum class Phase { idle, listening, over };

  void handleAccepted(Descriptor socket);
  void handleFailure();
  void close();
  void notify(platform::ListenerState state);

  ServerThread& thread_;
  LoopbackSockets sockets_;
  const platform::TcpParameters parameters_;
  std::optional<platform::Service> service_;
  platform::Listener::StateHandler stateHandler_;
  platform::Listener::NewConnectionHandler newConnectionHandler_;
  Phase phase_ = Phase::idle;
  bool isCancelled_ = false;
  std::vector<std::shared_ptr<ConnectionAcceptor>> acceptors_;
  std::unique_ptr<ServiceAdvertisement> advertisement_;
};

}  // namespace tarnix::linux_platform
