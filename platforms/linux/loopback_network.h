#pragma once

#include "probe/platform/network.h"

namespace tarnix::linux_platform {

/// TCP on the loopback interface, served on the server thread. One instance, never destroyed. Any
/// thread.
class LoopbackNetwork final : public platform::Network {
 public:
  static LoopbackNetwork& shared();

  platform::ListenerResult makeListener(const platform::TcpParameters& parameters) override;
  platform::SerialQueue& queue() override;

 private:
  LoopbackNetwork() = default;
};

}  // namespace tarnix::linux_platform
