#pragma once

#include <QPoint>

class QGraphicsItem;
class QGraphicsProxyWidget;
class QGraphicsView;
class QWidget;

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

/// What has the focus in the scene of a view: a widget that stands there. Known also while the
/// window is in the background, when the scene itself gives no figure the focus. Null when it is no
/// widget. Main thread.
QWidget* focusedInScene(const QGraphicsView& view);

/// Whether a figure of the scene has the focus, be it a widget. Main thread.
bool isFigureFocused(const QGraphicsView& view);

/// Whether keys that a view gets do anything in its scene. Main thread.
bool takesKeysInScene(const QGraphicsView& view);

}  // namespace tarnix::qt6
