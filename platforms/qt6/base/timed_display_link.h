#pragma once

#include <memory>

#include "platforms/qt6/base/display_frames.h"
#include "platforms/qt6/base/qt_display_link.h"

class QSocketNotifier;

namespace tarnix::qt6 {

/// Wakes the loop for each frame: with one timer of the system's that runs at the refresh rate. A
/// timer of the toolkit's counts whole milliseconds, which no refresh rate is, and would have to be
/// set again for each frame.
class TimedDisplayLink : public QtDisplayLink {
 public:
  explicit TimedDisplayLink(platform::Display::Tick tick);
  ~TimedDisplayLink() override;

  void resume() override;
  void suspend() override;

 private:
  void run();
  void showFrames();

  const std::shared_ptr<platform::Display::Tick> tick_;
  const int timer_;
  QSocketNotifier* notifier_ = nullptr;
  double rate_ = 0;
  Seconds lastFrame_{0};
};

}  // namespace tarnix::qt6
