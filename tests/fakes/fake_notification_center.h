#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "probe/platform/main_queue.h"
#include "probe/platform/notification_center.h"

namespace tarnix::fakes {

class FakeNotificationCenter : public platform::NotificationCenter {
 public:
  explicit FakeNotificationCenter(platform::MainQueue& mainQueue) : mainQueue_(mainQueue) {}

  void addObserver(std::string_view name, std::function<void()> observer) override {
    observers.emplace(name, std::move(observer));
  }

  void post(const std::string& name) {
    const auto [first, last] = observers.equal_range(name);
    for (auto entry = first; entry != last; ++entry) {
      mainQueue_.async(entry->second);
    }
  }

  std::multimap<std::string, std::function<void()>> observers;

 private:
  platform::MainQueue& mainQueue_;
};

}  // namespace tarnix::fakes
