#pragma once

#include <functional>
#include <string_view>

namespace tarnix::platform {

/// Tells of moments in the host's life. Any thread.
class NotificationCenter {
 public:
  virtual ~NotificationCenter() = default;

  /// Runs `observer` on the main queue each time the notification of that name is posted, for the
  /// life of the process. The one name so far is "UIApplicationDidFinishLaunchingNotification":
  /// posted once, one turn of the event loop after the first window was exposed.
  virtual void addObserver(std::string_view name, std::function<void()> observer) = 0;
};

}  // namespace tarnix::platform
