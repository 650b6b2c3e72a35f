#pragma once

#include <cstdint>
#include <memory>

#include "platforms/linux/loopback_sockets.h"
#include "probe/platform/listener.h"
#include "probe/platform/network.h"

namespace tarnix::linux_platform {

class LoopbackAcceptance;
class ServerThread;

/// Listens on the loopback addresses and lets only the host's own user and root through.
class LoopbackListener final : public platform::Listener {
 public:
  LoopbackListener(ServerThread& thread, LoopbackSockets sockets,
                   const platform::TcpParameters& parameters);

  /// As `cancel`, but no handler runs any more.
  ~LoopbackListener() override;

  void setService(platform::Service service) override;
  void setStateHandler(StateHandler handler) override;
  void setNewConnectionHandler(NewConnectionHandler handler) override;
  void start() override;
  void cancel() override;
  std::uint16_t port() const override { return port_; }

 private:
  ServerThread& thread_;
  const std::uint16_t port_;
  /// Shared with what is under way on the server thread.
  const std::shared_ptr<LoopbackAcceptance> acceptance_;
};

}  // namespace tarnix::linux_platform
