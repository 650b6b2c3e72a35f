#pragma once

#include <algorithm>
#include <chrono>
#include <memory>
#include <utility>
#include <vector>

#include "probe/platform/display.h"

namespace tarnix::fakes {

/// Ticks when the test says so.
class FakeDisplay : public platform::Display {
 public:
  std::unique_ptr<platform::DisplayLink> displayLink(Tick tick, platform::TickDelivery) override {
    auto shared = std::make_shared<Tick>(std::move(tick));
    ticks_.push_back(shared);
    return std::make_unique<FakeLink>(std::move(shared));
  }

  void showFrame(double timestamp) {
    std::erase_if(ticks_, [](const std::weak_ptr<Tick>& tick) { return tick.expired(); });
    for (const std::weak_ptr<Tick>& tick : std::vector(ticks_)) {
      if (const std::shared_ptr<Tick> alive = tick.lock()) {
        (*alive)(std::chrono::duration<double>(timestamp));
      }
    }
  }

  std::size_t linkCount() const {
    return static_cast<std::size_t>(std::count_if(
        ticks_.begin(), ticks_.end(), [](const auto& tick) { return !tick.expired(); }));
  }

 private:
  struct FakeLink : platform::DisplayLink {
    explicit FakeLink(std::shared_ptr<Tick> held) : tick(std::move(held)) {}
    std::shared_ptr<Tick> tick;
  };

  std::vector<std::weak_ptr<Tick>> ticks_;
};

}  // namespace tarnix::fakes
