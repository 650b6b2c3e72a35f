#pragma once

#include <algorithm>
#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

namespace tarnix::contract {

/// What handlers saw, in order. Any thread.
class Events {
 public:
  void add(std::string event) {
    const std::lock_guard lock(mutex_);
    events_.push_back(std::move(event));
  }

  std::vector<std::string> all() const {
    const std::lock_guard lock(mutex_);
    return events_;
  }

  std::size_t count(const std::string& event) const {
    const std::vector<std::string> events = all();
    return static_cast<std::size_t>(std::count(events.begin(), events.end(), event));
  }

  bool has(const std::string& event) const { return count(event) > 0; }

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> events_;
};

}  // namespace tarnix::contract
