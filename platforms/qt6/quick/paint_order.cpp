#include "platforms/qt6/quick/paint_order.h"

#include <QQuickItem>
#include <algorithm>

#include "platforms/qt6/quick/root_seeker.h"

namespace tarnix::qt6 {

QList<QQuickItem*> inPaintOrder(const QQuickItem& item) {
  QList<QQuickItem*> children = item.childItems();
  RootSeeker::removeFrom(children);
  const auto isBehind = [](const QQuickItem* left, const QQuickItem* right) {
    return left->z() < right->z();
  };
  if (!std::is_sorted(children.cbegin(), children.cend(), isBehind)) {
    std::stable_sort(children.begin(), children.end(), isBehind);
  }
  return children;
}

}  // namespace tarnix::qt6
