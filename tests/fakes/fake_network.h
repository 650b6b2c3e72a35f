#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "probe/platform/network.h"
#include "tests/fakes/fake_connection.h"
#include "tests/fakes/fake_listener.h"
#include "tests/fakes/fake_serial_queue.h"

namespace tarnix::fakes {

/// A network whose listeners and connections do what the test says.
class FakeNetwork : public platform::Network {
 public:
  FakeNetwork() = default;
  FakeNetwork(const FakeNetwork&) = delete;
  FakeNetwork& operator=(const FakeNetwork&) = delete;
  ~FakeNetwork() override {
    for (const std::weak_ptr<FakeConnection>& weak : connections_) {
      if (const std::shared_ptr<FakeConnection> connection = weak.lock()) {
        connection->abandon();
      }
    }
  }

  platform::ListenerResult makeListener(const platform::TcpParameters& parameters) override {
    lastParameters = parameters;
    if (refusal) {
      return {nullptr, *refusal};
    }
    listeners.push_back(std::make_shared<FakeListenerRecord>());
    return {std::make_unique<FakeListener>(listeners.back()), ""};
  }

  platform::SerialQueue& queue() override { return serialQueue; }

  /// The newest listener enters a state.
  void listenerBecomes(platform::ListenerState state) {
    serialQueue.async([record = listeners.back(), state] { record->stateHandler(state); });
  }

  /// A companion connects to the newest listener.
  std::shared_ptr<FakeConnection> connect() {
    auto connection = std::make_shared<FakeConnection>(serialQueue);
    connections_.push_back(connection);
    serialQueue.async(
        [record = listeners.back(), connection] { record->newConnectionHandler(connection); });
    return connection;
  }

  FakeSerialQueue serialQueue;
  /// All that were made, oldest first.
  std::vector<std::shared_ptr<FakeListenerRecord>> listeners;
  /// Why no listener can be made.
  std::optional<std::string> refusal;
  platform::TcpParameters lastParameters;

 private:
  std::vector<std::weak_ptr<FakeConnection>> connections_;
};

}  // namespace tarnix::fakes
