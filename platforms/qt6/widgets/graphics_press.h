#pragma once

#include <QPoint>

class QGraphicsView;

namespace tarnix::qt6 {

/// Whether a press at `point` of `view`, in its own coordinates, makes anything in its scene react.
/// Main thread.
bool reactsInScene(const QGraphicsView& view, QPoint point);

}  // namespace tarnix::qt6
