#pragma once

#include <deque>
#include <functional>
#include <utility>

#include "probe/platform/serial_queue.h"

namespace tarnix::fakes {

/// Runs closures when the test says so, on the test's thread.
class FakeSerialQueue : public platform::SerialQueue {
 public:
  void async(std::function<void()> closure) override { closures_.push_back(std::move(closure)); }

  /// Runs what has been handed in, and what that hands in. Returns whether anything ran.
  bool runReady() {
    bool anyRan = false;
    while (!closures_.empty()) {
      const std::function<void()> closure = std::move(closures_.front());
      closures_.pop_front();
      isRunning_ = true;
      closure();
      isRunning_ = false;
      anyRan = true;
    }
    return anyRan;
  }

  /// Whether the caller runs on this queue.
  bool isRunning() const { return isRunning_; }

 private:
  std::deque<std::function<void()>> closures_;
  bool isRunning_ = false;
};

}  // namespace tarnix::fakes
