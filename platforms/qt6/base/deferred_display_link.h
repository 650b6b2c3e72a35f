#pragma once

#include <cstdint>
#include <memory>

#include "platforms/qt6/base/display_frames.h"
#include "platforms/qt6/base/main_loop_watch.h"
#include "platforms/qt6/base/qt_display_link.h"
#include "platforms/qt6/base/timed_display_link.h"

namespace tarnix::qt6 {

/// Never wakes the loop where it can be watched: the frames that passed while it rested are shown
/// when it next runs. Elsewhere it is a link that wakes it.
class DeferredDisplayLink : public QtDisplayLink, private MainLoopWatch::Observer {
 public:
  explicit DeferredDisplayLink(platform::Display::Tick tick);

  void resume() override;
  void suspend() override;

 private:
  void loopWillRest() override;
  void loopHasRested() override;
  /// Frames that passed since the last call.
  std::int64_t takeFrames();
  /// The last ones of those.
  void showFrames(std::int64_t count);

  const std::shared_ptr<platform::Display::Tick> tick_;
  MainLoopWatch watch_;
  /// Until the loop is watched.
  std::unique_ptr<TimedDisplayLink> timed_;
  Seconds period_{0};
  Seconds nextFrame_{0};
};

}  // namespace tarnix::qt6
