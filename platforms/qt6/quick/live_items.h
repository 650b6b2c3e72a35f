#pragma once

#include <QList>

#include "platforms/qt6/quick/item_class.h"

class QQuickItem;

namespace tarnix::qt6 {

/// Takes those of the `children` of `item` out that a view keeps for later and does not draw. They
/// stand where they were last used and say that they are visible. `parent` is the class of the item
/// around; null for the outermost one. Main thread.
void removeUnusedItems(const QQuickItem& item, const ItemClass& itemClass, const ItemClass* parent,
                       QList<QQuickItem*>& children);

}  // namespace tarnix::qt6
