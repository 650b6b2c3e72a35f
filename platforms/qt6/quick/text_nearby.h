#pragma once

#include <QString>

class QQuickItem;

namespace tarnix::qt6 {

/// The text that stands before or above `field` in the same container; empty when there is none.
/// Main thread.
QString textNearby(const QQuickItem& field);

}  // namespace tarnix::qt6
