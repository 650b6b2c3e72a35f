#pragma once

#include "platforms/qt6/shared/user_interface_part.h"

class QWidget;

namespace tarnix::qt6 {

/// The screens of windows that hold a widget: the window, and the current pages of tabs, stacks,
/// wizards, tool boxes and inner windows. Main thread.
class WidgetScreens : public ScreenFinder {
 public:
  /// Made once a process; `source` lives as long.
  explicit WidgetScreens(ViewSource& source) : source_(source) {}

  bool addScreens(QWindow& window, ScreenChain& chain) override;
  std::unique_ptr<platform::ViewController> controllerOf(QObject& object) override;

 private:
  ViewSource& source_;
};

}  // namespace tarnix::qt6
