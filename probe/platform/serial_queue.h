#pragma once

#include <functional>

namespace tarnix::platform {

/// Runs closures on one thread of its own, in the order in which they were given. Any thread may
/// give them. Closures do not throw.
class SerialQueue {
 public:
  virtual ~SerialQueue() = default;

  virtual void async(std::function<void()> closure) = 0;
};

}  // namespace tarnix::platform
