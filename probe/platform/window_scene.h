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
};

}  // namespace tarnix::platform
