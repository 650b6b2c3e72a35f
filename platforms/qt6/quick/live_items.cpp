#include "platforms/qt6/quick/live_items.h"

#include <QQuickItem>

#include "platforms/qt6/quick/attached_properties.h"

namespace tarnix::qt6 {

void removeUnusedItems(const ItemClass& viewClass, const QQuickItem& content,
                       QList<QQuickItem*>& children) {
  static_cast<void>(viewClass);
  static_cast<void>(content);
  static_cast<void>(children);
}

}  // namespace tarnix::qt6
