#pragma once

#include <QList>

#include "platforms/qt6/quick/item_class.h"

class QQuickItem;

namespace tarnix::qt6 {

/// Takes those of `children` out that a view keeps for later and does not draw. They stand where
/// they stood when they were last used and say that they are visible. `content` is the item that
/// holds the rows of a view of class `viewClass`. Main thread.
void removeUnusedItems(const ItemClass& viewClass, const QQuickItem& content,
                       QList<QQuickItem*>& children);

}  // namespace tarnix::qt6
