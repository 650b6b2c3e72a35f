#pragma once

#include <memory>
#include <vector>

#include "probe/platform/window_scene.h"

namespace tarnix::platform {

/// The running host application. Main thread.
class Application {
 public:
  virtual ~Application() = default;

  /// Empty before the host has an application object.
  virtual std::vector<std::shared_ptr<WindowScene>> connectedScenes() const = 0;
};

}  // namespace tarnix::platform
