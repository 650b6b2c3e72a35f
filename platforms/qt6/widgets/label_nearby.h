#pragma once

#include <QString>

class QWidget;

namespace tarnix::qt6 {

/// The text of the label that stands before or above `field` in the same container and belongs to
/// no other; empty when there is none. Main thread.
QString labelNearby(const QWidget& field);

}  // namespace tarnix::qt6
