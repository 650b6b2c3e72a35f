#pragma once

#include <functional>
#include <memory>

#include "platforms/linux/descriptor.h"

namespace tarnix::linux_platform {

class ServerThread;

/// Accepts connections from one listening socket and rides out whatever passes: a process short of
/// descriptors, a peer that was gone before it was accepted. Lives on the server thread and keeps
/// itself alive until `stop`.
class ConnectionAcceptor {
 public:
  using AcceptHandler = std::function<void(Descriptor)>;
  using FailureHandler = std::function<void()>;

  /// `socket` is bound. Nothing when it cannot listen. Any thread. After `onFailure` nothing more
  /// comes.
  static std::shared_ptr<ConnectionAcceptor> make(ServerThread& thread, Descriptor socket,
                                                  AcceptHandler onAccept, FailureHandler onFailure);

  virtual ~ConnectionAcceptor() = default;

  virtual void start() = 0;

  /// Closes the socket; no handler runs any more.
  virtual void stop() = 0;
};

}  // namespace tarnix::linux_platform
