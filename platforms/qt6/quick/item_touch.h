#pragma once

#include <QPointF>
#include <memory>

#include "platforms/qt6/shared/surroundings.h"
#include "probe/platform/view.h"

class QQuickWindow;

namespace tarnix::qt6 {

/// The item that a touch at `point`, on the screen, reaches first, with those around it and `outer`
/// as its superviews. Null when the touch goes through the scene. Main thread.
std::shared_ptr<platform::View> touchedItem(QQuickWindow& window, const Surroundings& surroundings,
                                            QPointF point, std::shared_ptr<platform::View> outer);

}  // namespace tarnix::qt6
