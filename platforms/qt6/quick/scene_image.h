#pragma once

#include <QImage>

class QQuickWindow;

namespace tarnix::qt6 {

/// What a scene shows, in pixels of the screen; null when it has shown nothing yet. Main thread.
QImage lastImageOf(QQuickWindow& window);

}  // namespace tarnix::qt6
