#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <chrono>
#include <memory>

#include "platforms/qt6/base/screen_history.h"

namespace tarnix::qt6 {

/// Notices which screen of the host comes on view and calls `viewDidAppear` for it. Main thread.
///
/// It runs from the moment that somebody has put an implementation there, and does not touch the
/// host's objects: it sees their events pass. A window or widget that comes or goes is looked after
/// at once. What a Quick scene shows changes without any event, but never without a frame: when no
/// frame has come for a while, the scene is looked over. Where there are no scenes that is done now
/// and then, for widgets that are moved on view.
class ScreenWatch : public ScreenFinder {
 public:
  static ScreenWatch& shared();

  platform::ViewDidAppear& viewDidAppear() { return viewDidAppear_; }

  /// An application object is there, or about to go.
  void start();
  void stop();

  /// Of windows that no part knows: their application paints them by itself.
  bool addScreens(QWindow& window, ScreenChain& chain) override;
  std::unique_ptr<platform::ViewController> controllerOf(QObject& object) override;

 private:
  class Events;

  ScreenWatch();
  void listen();
  void look();

  platform::ViewDidAppear viewDidAppear_;
  bool isWanted_ = false;
  std::unique_ptr<Events> events_;
  ScreenHistory history_;
};

}  // namespace tarnix::qt6
