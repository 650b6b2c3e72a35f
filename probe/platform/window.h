#pragma once

#include "probe/platform/geometry.h"
#include "probe/platform/picture.h"
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
  /// The view in front that a person's touch at `point` reaches first, popups before what they
  /// cover; null where no view takes it.
  virtual std::shared_ptr<View> hitTest(Point point) const {
    static_cast<void>(point);
    return nullptr;
  }
  /// The window as it was last rendered, in the screen's own pixels, without what the probe draws
  /// over it. Absent when nothing was rendered yet and nothing can be.
  virtual std::optional<Picture> lastPicture() const { return std::nullopt; }
};

}  // namespace tarnix::platform
