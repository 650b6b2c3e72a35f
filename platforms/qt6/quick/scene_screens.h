#pragma once

#include "platforms/qt6/shared/screen.h"

namespace tarnix::qt6 {

/// The screens of Quick scenes: the window, the pages in it, and the dialogs and drawers in front.
class SceneScreens : public ScreenFinder {
 public:
  static SceneScreens& shared();

  bool addScreens(QWindow& window, ScreenChain& chain) override;
  std::unique_ptr<platform::ViewController> controllerOf(QObject& object) override;

 private:
  SceneScreens() = default;
};

}  // namespace tarnix::qt6
