#include "platforms/linux/loopback_acceptance.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <utility>

#include "platforms/linux/peer_user.h"
#include "platforms/linux/server_thread.h"
#include "platforms/linux/tcp_connection.h"

namespace tarnix::linux_platform {

namespace {

/// Failure leaves the system's defaults, with which a connection works just as well.
void apply(const platform::TcpParameters& parameters, int socket) {
  if (!parameters.enableKeepalive) {
    return;
  }
  const int enabled = 1;
  const int idleSeconds = static_cast<int>(parameters.keepaliveIdle.count());
  ::setsockopt(socket, SOL_SOCKET, SO_KEEPALIVE, &enabled, sizeof(enabled));
  ::setsockopt(socket, IPPROTO_TCP, TCP_KEEPIDLE, &idleSeconds, sizeof(idleSeconds));
}

}  // namespace

LoopbackAcceptance::LoopbackAcceptance(ServerThread& thread, LoopbackSockets sockets,
                                       const platform::TcpParameters& parameters)
    : thread_(thread), sockets_(std::move(sockets)), parameters_(parameters) {}

void LoopbackAcceptance::start() {
  if (phase_ != Phase::idle) {
    return;
  }
  phase_ = Phase::listening;
  for (Descriptor* socket : {&sockets_.ipv4, &sockets_.ipv6}) {
    if (!socket->isOpen()) {
      continue;
    }
    // The acceptors are stopped before this goes away.
    std::shared_ptr<ConnectionAcceptor> acceptor = ConnectionAcceptor::make(
        thread_, std::move(*socket),
        [this](Descriptor connection) { handleAccepted(std::move(connection)); },
        [this] { handleFailure(); });
    if (!acceptor) {
      handleFailure();
      return;
    }
    acceptors_.push_back(acceptor);
    acceptor->start();
    if (phase_ != Phase::listening) {
      return;
    }
  }
  if (service_) {
    advertisement_ = ServiceAdvertisement::start(*service_, sockets_.port);
  }
  notify(platform::ListenerState::ready);
}

void LoopbackAcceptance::cancel() {
  if (isCancelled_) {
    return;
  }
  isCancelled_ = true;
  close();
  notify(platform::ListenerState::cancelled);
  abandon();
}

void LoopbackAcceptance::abandon() {
  isCancelled_ = true;
  close();
  stateHandler_ = nullptr;
  newConnectionHandler_ = nullptr;
}

void LoopbackAcceptance::handleAccepted(Descriptor socket) {
  if (!isPeerTrusted(socket.get())) {
    return;
  }
  apply(parameters_, socket.get());
  const std::shared_ptr<platform::Connection> connection =
      makeTcpConnection(thread_, std::move(socket));
  if (connection && newConnectionHandler_) {
    newConnectionHandler_(connection);
  }
}

void LoopbackAcceptance::handleFailure() {
  // Called by an acceptor that is still on the stack.
  const std::shared_ptr<LoopbackAcceptance> self = shared_from_this();
  close();
  notify(platform::ListenerState::failed);
}

void LoopbackAcceptance::close() {
  phase_ = Phase::over;
  for (const std::shared_ptr<ConnectionAcceptor>& acceptor : std::exchange(acceptors_, {})) {
    acceptor->stop();
  }
  sockets_.ipv4.close();
  sockets_.ipv6.close();
  advertisement_.reset();
}

void LoopbackAcceptance::notify(platform::ListenerState state) {
  if (stateHandler_) {
    const platform::Listener::StateHandler handler = stateHandler_;
    handler(state);
  }
}

}  // namespace tarnix::linux_platform
