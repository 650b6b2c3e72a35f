#pragma once

#include "probe/platform/display.h"

namespace tarnix::qt6 {

/// A link that rests while there is no application object. Main thread.
class QtDisplayLink : public platform::DisplayLink {
 public:
  QtDisplayLink();
  QtDisplayLink(const QtDisplayLink&) = delete;
  QtDisplayLink& operator=(const QtDisplayLink&) = delete;
  ~QtDisplayLink() override;

  virtual void resume() = 0;
  virtual void suspend() = 0;

  static void resumeAll();
  static void suspendAll();
};

}  // namespace tarnix::qt6
