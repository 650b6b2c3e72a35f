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

/// What gets the text that is typed into a view: the widget in its scene that has the focus, the
/// view itself where a figure of another kind has it, null where none has. Of widgets it is known
/// also while the window is in the background, when the scene itself gives no figure the focus.
/// Main thread.
QWidget* typedIntoInScene(QGraphicsView& view);

/// Whether keys that a view gets do anything in its scene. Main thread.
bool takesKeysInScene(const QGraphicsView& view);

}  // namespace tarnix::qt6
