#include "platforms/qt6/quick/scene_image.h"

#include <QQuickWindow>

namespace tarnix::qt6 {

QImage lastImageOf(QQuickWindow& window) {
  if (window.width() <= 0 || window.height() <= 0 || window.handle() == nullptr) {
    return {};
  }
  // No public way leads to the last frame, neither in software nor on a graphics card: the scene is
  // drawn once more, as it stands. What asked to be laid out since is laid out by that, as it would
  // be for the next frame; nothing else is. Without a device to draw on there never was a frame, and
  // making one for the picture would take as long as a start.
  if (!window.isSceneGraphInitialized()) {
    return {};
  }
  return window.grabWindow();
}

}  // namespace tarnix::qt6
