#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

#include "probe/platform/listener.h"
#include "tests/fakes/fake_serial_queue.h"

namespace tarnix::fakes {

/// What the test sees of a listener, also after the code under test has let go of it.
struct FakeListenerRecord {
  std::optional<platform::Service> service;
  platform::Listener::StateHandler stateHandler;
  platform::Listener::NewConnectionHandler newConnectionHandler;
  bool isStarted = false;
  bool isCancelled = false;
  bool isDestroyed = false;
};

class FakeListener : public platform::Listener {
 public:
  explicit FakeListener(std::shared_ptr<FakeListenerRecord> record) : record_(std::move(record)) {}
  FakeListener(const FakeListener&) = delete;
  FakeListener& operator=(const FakeListener&) = delete;
  ~FakeListener() override { record_->isDestroyed = true; }

  void setService(platform::Service service) override { record_->service = std::move(service); }
  void setStateHandler(StateHandler handler) override {
    record_->stateHandler = std::move(handler);
  }
  void setNewConnectionHandler(NewConnectionHandler handler) override {
    record_->newConnectionHandler = std::move(handler);
  }
  void start() override { record_->isStarted = true; }
  void cancel() override { record_->isCancelled = true; }
  std::uint16_t port() const override { return 4711; }

 private:
  std::shared_ptr<FakeListenerRecord> record_;
};

}  // namespace tarnix::fakes
