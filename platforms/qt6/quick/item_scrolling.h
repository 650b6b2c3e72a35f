#pragma once

#include <QPointF>

class QQuickItem;

/// Flickables moved as a finger moves them. Main thread.
namespace tarnix::qt6::item_scrolling {

/// Whether `item` is one, takes fingers, and has anything to scroll to.
bool canScroll(const QQuickItem& item);

/// Where it stands, or is on its way to.
QPointF offset(const QQuickItem& item);

/// Past an end as far as the item lets a finger drag it, and back to the end then. What it cannot
/// do in one direction at all, the flickable around it does.
void scrollTo(QQuickItem& item, QPointF offset);

}  // namespace tarnix::qt6::item_scrolling
