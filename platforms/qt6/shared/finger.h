#pragma once

#include <QPointF>

class QWindow;

/// A person's finger, as the toolkit sees it. Main thread.
namespace tarnix::qt6::finger {

/// Presses at `point` of the window and lets go, as the left button of a mouse does, so that
/// everything that watches events, modality included, sees what it would see of a person. Returns
/// when the host has reacted. Where its reaction to the press runs a loop of its own, as an opened
/// menu does, the finger is lifted in that loop.
void tap(QWindow& window, QPointF point);

/// Comes to `point` of the window without touching it, as a mouse does before it presses.
void approach(QWindow& window, QPointF point);

}  // namespace tarnix::qt6::finger
