#pragma once

#include <functional>
#include <optional>
#include <string>

namespace tarnix::platform {

enum class ConnectionState {
  /// Bytes flow.
  ready,
  /// Over, by an error of the network.
  failed,
  /// Over, by `cancel`.
  cancelled,
};

/// What the network said when it refused, for people.
struct NetworkError {
  std::string description;
};

/// One TCP stream with one peer. Everything may be called from any thread; every handler and
/// completion runs on the queue of the `Network` that the connection comes from, and none runs
/// inside the call that caused it. A connection that still has work outstanding keeps itself alive.
class Connection {
 public:
  using StateHandler = std::function<void(ConnectionState)>;
  using SendCompletion = std::function<void(std::optional<NetworkError>)>;
  /// Either at least one byte, or an error. The peer's orderly close is an error too.
  using ReceiveCompletion = std::function<void(std::string bytes, std::optional<NetworkError>)>;

  virtual ~Connection() = default;

  /// Called before `start`. The handler is let go of after `cancelled`.
  virtual void setStateHandler(StateHandler handler) = 0;

  virtual void start() = 0;

  /// Ends the connection. Outstanding sends and receives complete with an error, then the state
  /// becomes `cancelled`. Once; a second call does nothing.
  virtual void cancel() = 0;

  /// Writes all of `bytes`, after those of earlier calls.
  virtual void send(std::string bytes, SendCompletion completion) = 0;

  /// Completes once, with whatever arrives next. One receive is outstanding at a time.
  virtual void receive(ReceiveCompletion completion) = 0;
};

}  // namespace tarnix::platform
