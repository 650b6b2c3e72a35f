#pragma once

#include <QPointF>
#include <memory>

#include "probe/platform/drawing.h"

namespace tarnix::qt6 {

/// What is drawn over one window of the host. Destroying it leaves the window as it was; it may
/// outlive the window, and does nothing then. Main thread.
class OverlayPane {
 public:
  virtual ~OverlayPane() = default;

  /// Shows `list`, with its origin at `origin` in the window, from the next frame on.
  virtual void show(std::shared_ptr<const platform::DisplayList> list, QPointF origin) = 0;

  /// Draws nothing until told otherwise: the host's picture is taken.
  virtual void setHiddenForPicture(bool isHidden) = 0;
};

/// The property of a window that points to the pane over it, while there is one.
inline constexpr const char* overlayPaneProperty = "_tarnixprobe_overlay";

}  // namespace tarnix::qt6
