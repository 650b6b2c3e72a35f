#include "platforms/qt6/quick/live_items.h"

#include <QMetaObject>
#include <QPoint>
#include <QQuickItem>
#include <QSet>
#include <cstring>

#include "platforms/qt6/quick/attached_properties.h"

namespace tarnix::qt6 {

namespace {

// A table shows no more rows and columns than a screen has pixels.
constexpr int mostRows = 10'000;

/// Whether the view of this attached type made the item; it attaches to all that it makes.
bool isMadeByView(const QQuickItem& item, const char* attachedType) {
  for (const QObject* child : item.children()) {
    if (std::strcmp(child->metaObject()->className(), attachedType) == 0) {
      return true;
    }
  }
  return false;
}

QSet<const QQuickItem*> cellsInUse(QQuickItem& table) {
  QSet<const QQuickItem*> cells;
  const QMetaObject& metaObject = *table.metaObject();
  const auto edge = [&](const char* name) { return Property(metaObject, name).integer(table); };
  const int left = std::max(edge("leftColumn"), 0);
  const int right = std::min(edge("rightColumn"), left + mostRows);
  const int top = std::max(edge("topRow"), 0);
  const int bottom = std::min(edge("bottomRow"), top + mostRows);
  for (int row = top; row <= bottom; ++row) {
    for (int column = left; column <= right; ++column) {
      QQuickItem* cell = nullptr;
      QMetaObject::invokeMethod(&table, "itemAtCell", Qt::DirectConnection,
                                Q_RETURN_ARG(QQuickItem*, cell),
                                Q_ARG(QPoint, QPoint(column, row)));
      cells.insert(cell);
    }
  }
  return cells;
}

void removePooledCells(QQuickItem& table, QList<QQuickItem*>& children) {
  const QSet<const QQuickItem*> used = cellsInUse(table);
  children.removeIf([&](const QQuickItem* child) {
    return !used.contains(child) && isMadeByView(*child, "QQuickTableViewAttached");
  });
}

void removePooledRows(QQuickItem& view, QList<QQuickItem*>& children) {
  children.removeIf([&](const QQuickItem* child) {
    if (!isMadeByView(*child, "QQuickListViewAttached") &&
        !isMadeByView(*child, "QQuickGridViewAttached")) {
      return false;
    }
    QQuickItem* used = nullptr;
    QMetaObject::invokeMethod(&view, "itemAt", Qt::DirectConnection,
                              Q_RETURN_ARG(QQuickItem*, used),
                              Q_ARG(qreal, child->x() + child->width() / 2),
                              Q_ARG(qreal, child->y() + child->height() / 2));
    return used != child;
  });
}

}  // namespace

void removeUnusedItems(const QQuickItem& item, const ItemClass& itemClass, const ItemClass* parent,
                       QList<QQuickItem*>& children) {
  if (itemClass.kind == ItemKind::pathView) {
    children.removeIf(
        [](const QQuickItem* child) { return !AttachedProperties(*child).isOnPath(); });
    return;
  }
  if (parent == nullptr || item.parentItem() == nullptr) {
    return;
  }
  const bool isTable = parent->kind == ItemKind::tableView || parent->kind == ItemKind::headerView;
  if (!isTable && parent->kind != ItemKind::itemView) {
    return;
  }
  // The rows are children of the item that a view scrolls.
  QQuickItem& view = *item.parentItem();
  if (parent->contentItem.object(view) != &item) {
    return;
  }
  if (isTable) {
    removePooledCells(view, children);
  } else if (parent->reuseItems.boolean(view)) {
    removePooledRows(view, children);
  }
}

}  // namespace tarnix::qt6
