#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "probe/platform/notification_center.h"

namespace tarnix::qt6 {

/// Notices that the application has finished launching: its first window was exposed and the event
/// loop has turned once more. Nothing of it stays in the host after that.
class QtNotificationCenter : public platform::NotificationCenter {
 public:
  /// The one that the core is told of.
  static QtNotificationCenter& shared();

  QtNotificationCenter() = default;

  /// Starts watching, unless the launch was noticed before. Main thread; each time an application
  /// object is made.
  void start();

  /// The application object is about to go. Main thread.
  void stop();

  void addObserver(std::string_view name, std::function<void()> observer) override;

 private:
  class LaunchWatch;

  void post(std::string_view name);

  std::mutex mutex_;
  std::map<std::string, std::vector<std::function<void()>>, std::less<>> observers_;
  // Main thread.
  LaunchWatch* watch_ = nullptr;
  bool hasLaunched_ = false;
};

}  // namespace tarnix::qt6
