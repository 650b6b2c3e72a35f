#include "platforms/linux/loopback_network.h"

#include <memory>
#include <string>
#include <utility>

#include "platforms/linux/loopback_listener.h"
#include "platforms/linux/loopback_sockets.h"
#include "platforms/linux/server_thread.h"

namespace tarnix::linux_platform {

LoopbackNetwork& LoopbackNetwork::shared() {
  static LoopbackNetwork& instance = *new LoopbackNetwork;
  return instance;
}

platform::ListenerResult LoopbackNetwork::makeListener(const platform::TcpParameters& parameters) {
  ServerThread& thread = ServerThread::shared();
  if (std::string error = thread.start(); !error.empty()) {
    return {nullptr, std::move(error)};
  }
  LoopbackSockets sockets = bindLoopback();
  if (!sockets.error.empty()) {
    return {nullptr, std::move(sockets.error)};
  }
  return {std::make_unique<LoopbackListener>(thread, std::move(sockets), parameters), {}};
}

platform::SerialQueue& LoopbackNetwork::queue() { return ServerThread::shared(); }

}  // namespace tarnix::linux_platform
