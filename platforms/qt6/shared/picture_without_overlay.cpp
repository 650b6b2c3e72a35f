#include "platforms/qt6/shared/picture_without_overlay.h"

#include <QVariant>
#include <QWindow>

namespace tarnix::qt6 {

PictureWithoutOverlay::PictureWithoutOverlay(const QWindow& window)
    // The modules share no data: what they all see is the window.
    : pane_(static_cast<OverlayPane*>(window.property(overlayPaneProperty).value<void*>())) {
  if (pane_ != nullptr) {
    pane_->setHiddenForPicture(true);
  }
}

PictureWithoutOverlay::~PictureWithoutOverlay() {
  if (pane_ != nullptr) {
    pane_->setHiddenForPicture(false);
  }
}

}  // namespace tarnix::qt6
