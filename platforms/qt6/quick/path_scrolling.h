#pragma once

#include <QPointF>

class QQuickItem;

/// Views that lay their items along a path, the wheels of a tumbler among them. Where they stand is
/// no point, so they are moved from where they stand. Main thread.
namespace tarnix::qt6::path_scrolling {

/// Whether `item` is one, takes fingers, and has anything to move.
bool canScroll(const QQuickItem& item);

/// Moves the items along the path as a finger does that goes from `point`, in the item's own
/// coordinates, by `distance` the other way.
void scrollBy(QQuickItem& item, QPointF point, QPointF distance);

}  // namespace tarnix::qt6::path_scrolling
