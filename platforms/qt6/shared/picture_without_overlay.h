#pragma once

#include "platforms/qt6/shared/overlay_pane.h"

class QWindow;

namespace tarnix::qt6 {

/// While it lives, what a window renders has nothing of ours in it. Costs nothing over a window
/// that nothing is drawn over. To live for the taking of a picture alone. Main thread.
class PictureWithoutOverlay {
 public:
  explicit PictureWithoutOverlay(const QWindow& window);
  PictureWithoutOverlay(const PictureWithoutOverlay&) = delete;
  PictureWithoutOverlay& operator=(const PictureWithoutOverlay&) = delete;
  ~PictureWithoutOverlay();

 private:
  OverlayPane* const pane_;
};

}  // namespace tarnix::qt6
