#pragma once

#include <QPoint>

class QGraphicsItem;
class QGraphicsProxyWidget;
class QGraphicsView;

namespace tarnix::qt6 {

/// Whether a figure of a scene does anything with a press. A widget in a scene does as it is told
/// to inside, and counts as none that does. Main thread.
bool reactsToPress(const QGraphicsItem& figure);

/// The widget that stands in the scene where a press at `point` of `view`, in its own coordinates,
/// arrives; null when that reaches no widget. Main thread.
const QGraphicsProxyWidget* widgetInScene(const QGraphicsView& view, QPoint point);

/// Whether a press at `point` of `view`, in its own coordinates, makes anything in its scene react.
/// Main thread.
bool reactsInScene(const QGraphicsView& view, QPoint point);

}  // namespace tarnix::qt6
