#pragma once

#include <QImage>

class QWidget;

namespace tarnix::qt6 {

class ViewSource;

/// What a window of widgets shows, in pixels of the screen; null when it has shown nothing yet.
/// Main thread.
QImage lastImageOf(QWidget& window, ViewSource& source);

}  // namespace tarnix::qt6
