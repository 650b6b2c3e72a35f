#pragma once

namespace tarnix::platform {

/// A button, slider, combo box: whatever reacts to a press by itself. Main thread.
class Control {
 public:
  virtual ~Control() = default;

  /// Presses and lets go inside.
  virtual void sendTouchUpInside() = 0;
};

}  // namespace tarnix::platform
