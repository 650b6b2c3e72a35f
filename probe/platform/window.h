#pragma once

#include "probe/platform/view.h"

namespace tarnix::platform {

/// A top-level window of the host, with the popups that stand in front of it among its subviews.
///
/// Coordinates: the device's screen is the key window. Its top-left corner is (0, 0), and every
/// frame and point of every window is given in that one space, so that the centre that is reported
/// for an element is the point to tap it at, wherever the window stands on a desktop.
class Window : public View {
 public:
  /// At most one window is the key window: the one with the focus, else the active modal one, else
  /// the last active visible one.
  virtual bool isKeyWindow() const = 0;
};

}  // namespace tarnix::platform
