#include "probe/link/waiting_connections.h"

#include <utility>

namespace tarnix {

void WaitingConnections::add(std::shared_ptr<platform::Connection> connection) {
  std::shared_ptr<platform::Connection> oldest;
  {
    const std::lock_guard lock(mutex_);
    connections_.push_back(std::move(connection));
    if (connections_.size() > capacity) {
      oldest = std::move(connections_.front());
      connections_.pop_front();
    }
  }
  if (oldest) {
    oldest->cancel();
  }
}

std::shared_ptr<platform::Connection> WaitingConnections::take() {
  const std::lock_guard lock(mutex_);
  if (connections_.empty()) {
    return nullptr;
  }
  std::shared_ptr<platform::Connection> next = std::move(connections_.front());
  connections_.pop_front();
  return next;
}

}  // namespace tarnix
