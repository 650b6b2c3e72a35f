#pragma once

#include <vector>

#include "platforms/qt6/shared/plain_item.h"

class QGraphicsView;

namespace tarnix::qt6 {

/// The figures of its scene that a view shows and that say something: texts, and what has a tool
/// tip. Widgets that stand in the scene are no figures. In the coordinates of the view. Main
/// thread.
std::vector<PlainItem::Description> visibleFigures(const QGraphicsView& view);

}  // namespace tarnix::qt6
