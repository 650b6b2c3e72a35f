#pragma once

#include <QPointF>

class QAbstractScrollArea;

/// A scroll area moved by distances on the screen, whatever its bars count. Main thread.
namespace tarnix::qt6::widget_scrolling {

/// Whether there is anything to scroll to.
bool canScroll(const QAbstractScrollArea& area);

/// Where it stands, or is on its way to.
QPointF offset(const QAbstractScrollArea& area);

/// Stops at the ends, as these areas do. What it cannot do in one direction at all, the scroll area
/// around it does.
void scrollTo(QAbstractScrollArea& area, QPointF offset);

}  // namespace tarnix::qt6::widget_scrolling
