#pragma once

#include <QPointF>
#include <memory>

#include "platforms/qt6/shared/user_interface_part.h"

class QWidget;

namespace tarnix::qt6 {

/// The widget that a touch at `point`, on the screen, reaches first, with those around it as its
/// superviews; what a widget shows that is no widget (a Quick scene) continues it. Null when the
/// touch goes through the window. Main thread.
std::shared_ptr<platform::View> touchedView(QWidget& window, const Surroundings& surroundings,
                                            QPointF point, ViewSource& source);

}  // namespace tarnix::qt6
