#include "platforms/linux/loopback_listener.h"

#include <new>
#include <utility>

#include "platforms/linux/fork_guard.h"
#include "platforms/linux/loopback_acceptance.h"
#include "platforms/linux/server_thread.h"

namespace tarnix::linux_platform {

LoopbackListener::LoopbackListener(ServerThread& thread, LoopbackSockets sockets,
                                   const platform::TcpParameters& parameters)
    : thread_(thread),
      port_(sockets.port),
      acceptance_(std::make_shared<LoopbackAcceptance>(thread, std::move(sockets), parameters)) {}

LoopbackListener::~LoopbackListener() {
  if (fork_guard::isInChild()) {
    // Kept for ever: ending it would take the locks of threads that are not here.
    new (std::nothrow) std::shared_ptr(acceptance_);
    return;
  }
  thread_.async([acceptance = acceptance_] { acceptance->abandon(); });
}

void LoopbackListener::setService(platform::Service service) {
  acceptance_->setService(std::move(service));
}

void LoopbackListener::setStateHandler(StateHandler handler) {
  acceptance_->setStateHandler(std::move(handler));
}

void LoopbackListener::setNewConnectionHandler(NewConnectionHandler handler) {
  acceptance_->setNewConnectionHandler(std::move(handler));
}

void LoopbackListener::start() {
  thread_.async([acceptance = acceptance_] { acceptance->start(); });
}

void LoopbackListener::cancel() {
  thread_.async([acceptance = acceptance_] { acceptance->cancel(); });
}

}  // namespace tarnix::linux_platform
