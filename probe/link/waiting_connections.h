#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>

#include "probe/platform/connection.h"

namespace tarnix {

/// Connections on their way from the network's queue to the main thread. While the main thread is
/// held up, companions may come and go in any number; each holds a descriptor of the host, so that
/// only the newest few are kept. Any thread.
class WaitingConnections {
 public:
  /// More than come at once when nobody means harm.
  static constexpr std::size_t capacity = 16;

  /// Adds the newest. When there is no room, the oldest is cancelled for it.
  void add(std::shared_ptr<platform::Connection> connection);

  /// The oldest; null when none waits any more.
  std::shared_ptr<platform::Connection> take();

 private:
  std::mutex mutex_;
  std::deque<std::shared_ptr<platform::Connection>> connections_;
};

}  // namespace tarnix
