#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "probe/platform/drawing.h"
#include "probe/platform/geometry.h"
#include "probe/platform/window_scene.h"

namespace tarnix::platform {

/// Something to draw on in front of the windows of a scene. It takes no touch, no focus and no part
/// in the host's layout, and is in no list of views, no hit test and no picture that this interface
/// gives of the host. Main thread. Destroying it leaves the host as it was before.
class OverlaySurface {
 public:
  struct Place {
    /// Of the window in front.
    Size size;
    /// What the system needs at its lower edge; 0 on a desktop.
    double bottomInset = 0;
    /// Where the origin of the previous place lies now. Not zero when another window has come to
    /// the front: what is to stay where a person saw it moves by this.
    Point movedBy;
  };

  virtual ~OverlaySurface() = default;

  /// Looks which window is in front, whose top-left corner is the origin from now on. Absent when
  /// there is none: nothing is drawn any more until there is one.
  virtual std::optional<Place> place() = 0;

  /// What it shows from its next frame on, in place of what it showed before.
  virtual void show(const DisplayList& list) = 0;
};

/// Where surfaces come from. Main thread.
class OverlaySurfaces {
 public:
  virtual ~OverlaySurfaces() = default;

  /// Null when the scene shows no window that can be drawn on. Costs nothing while it shows
  /// nothing.
  virtual std::unique_ptr<OverlaySurface> makeSurface(WindowScene& scene) = 0;

  /// What one line of text takes; `text` is UTF-8.
  virtual Size sizeOf(std::string_view text, const Font& font) = 0;
};

}  // namespace tarnix::platform
