#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "probe/platform/connection.h"

namespace tarnix::platform {

enum class ListenerState {
  /// Connections are accepted.
  ready,
  /// No more connections will come.
  failed,
  /// Over, by `cancel`.
  cancelled,
};

/// How a listener is found: a DNS service discovery registration without domain and TXT record.
struct Service {
  /// What people see, in UTF-8. A name that is taken is made unique by the registrar.
  std::string name;
  /// Such as "_http._tcp".
  std::string type;
};

/// Accepts TCP connections from this machine, on a port that the system chose. Handlers run on the
/// queue of the `Network` that the listener comes from, and none runs inside the call that caused
/// it. The setters are called before `start`.
class Listener {
 public:
  using StateHandler = std::function<void(ListenerState)>;
  using NewConnectionHandler = std::function<void(std::shared_ptr<Connection>)>;

  virtual ~Listener() = default;

  virtual void setService(Service service) = 0;
  virtual void setStateHandler(StateHandler handler) = 0;

  /// Only connections of the user that the process runs as, and of root, come this far.
  virtual void setNewConnectionHandler(NewConnectionHandler handler) = 0;

  virtual void start() = 0;

  /// Ends listening and the advertisement. Connections that were handed over live on.
  virtual void cancel() = 0;

  virtual std::uint16_t port() const = 0;
};

}  // namespace tarnix::platform
