#pragma once

#include "probe/platform/window_scene.h"

namespace tarnix::qt6 {

/// The host's one scene: all its visible top-level windows.
class QtWindowScene : public platform::WindowScene {
 public:
  std::vector<std::shared_ptr<platform::Window>> windows() const override;
  bool isForegroundActive() const override;
  bool isConnected() const override;
};

}  // namespace tarnix::qt6
