#pragma once

#include <QList>

class QQuickItem;

namespace tarnix::qt6 {

/// The children of `item` that are the host's, those in front last. Main thread.
QList<QQuickItem*> inPaintOrder(const QQuickItem& item);

}  // namespace tarnix::qt6
