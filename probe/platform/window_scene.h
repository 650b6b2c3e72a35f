#pragma once

#include <memory>
#include <vector>

#include "probe/platform/window.h"

namespace tarnix::platform {

/// The windows that belong together. Main thread.
class WindowScene {
 public:
  virtual ~WindowScene() = default;

  /// The visible ones.
  virtual std::vector<std::shared_ptr<Window>> windows() const = 0;
  /// Whether a person works with it at this moment.
  virtual bool isForegroundActive() const { return true; }
  /// False once it has gone for good. May be asked for as long as the scene is kept.
  virtual bool isConnected() const { return true; }
};

}  // namespace tarnix::platform
