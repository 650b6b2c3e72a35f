#include "platforms/qt6/widgets/item_view_cells.h"

#include <QAbstractItemView>
#include <QHeaderView>
#include <QListView>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QTreeView>
#include <algorithm>

#include "platforms/qt6/shared/visible_text.h"
#include "platforms/qt6/widgets/cell_check_box.h"

namespace tarnix::qt6 {

namespace {

namespace traits = platform::accessibility_traits;

// No screen shows more cells. A view whose layout is not done may claim to.
constexpr std::size_t mostCells = 20'000;

QString textOf(const QAbstractItemView& view, const QModelIndex& index) {
  const QString accessible = index.data(Qt::AccessibleTextRole).toString();
  if (!accessible.isEmpty()) {
    return accessible;
  }
  const QVariant data = index.data(Qt::DisplayRole);
  if (!data.isValid()) {
    return {};
  }
  if (data.typeId() == QMetaType::QString) {
    return data.toString();
  }
  // Dates and numbers are written the way the delegate writes them.
  const auto* const delegate =
      qobject_cast<const QStyledItemDelegate*>(view.itemDelegateForIndex(index));
  return delegate == nullptr ? data.toString() : delegate->displayText(data, view.locale());
}

const QHeaderView* titlesOf(const QAbstractItemView& view) {
  if (const auto* const table = qobject_cast<const QTableView*>(&view)) {
    return table->horizontalHeader();
  }
  const auto* const tree = qobject_cast<const QTreeView*>(&view);
  return tree == nullptr ? nullptr : tree->header();
}

/// What a cell reads. One without a text, which is a picture or a box to check, is told by its tool
/// tip or by the title above it.
QString shownText(const QAbstractItemView& view, const QModelIndex& index) {
  const QString text = textOf(view, index);
  if (!text.trimmed().isEmpty()) {
    return text;
  }
  const bool hasBox = index.data(Qt::CheckStateRole).isValid();
  if (!hasBox && !index.data(Qt::DecorationRole).isValid()) {
    return text;
  }
  const QString tip = plainText(index.data(Qt::ToolTipRole).toString());
  const QHeaderView* const titles = hasBox && tip.isEmpty() ? titlesOf(view) : nullptr;
  return titles == nullptr || titles->isHidden()
             ? tip
             : view.model()->headerData(index.column(), Qt::Horizontal, Qt::DisplayRole).toString();
}

/// Adds the cells of one view.
class CellCollector {
 public:
  explicit CellCollector(const QAbstractItemView& view)
      : view_(view), viewport_(view.viewport()->geometry()) {}

  /// Whether any of it can be seen.
  bool add(const QModelIndex& index) {
    const QRect area = view_.visualRect(index).translated(viewport_.topLeft());
    const QRect visible = area.intersected(viewport_);
    if (visible.isEmpty() || cells_.size() >= mostCells) {
      return false;
    }
    PlainItem::Description cell;
    cell.label = shownText(view_, index);
    cell.area = visible;
    const Qt::ItemFlags flags = index.flags();
    if (view_.selectionModel() != nullptr && view_.selectionModel()->isSelected(index)) {
      cell.traits |= traits::selected;
    }
    if (!view_.isEnabled() || !flags.testFlag(Qt::ItemIsEnabled)) {
      cell.traits |= traits::notEnabled;
    }
    const QVariant checkState = index.data(Qt::CheckStateRole);
    if (checkState.isValid()) {
      cell.traits |= traits::button;
      cell.value = checkState.toInt() == Qt::PartiallyChecked ? QStringLiteral("mixed")
                   : checkState.toInt() == Qt::Checked        ? QStringLiteral("1")
                                                              : QStringLiteral("0");
      const QRect box = checkBoxOf(view_, index).translated(viewport_.topLeft());
      if (box.intersects(visible)) {
        cell.area = box.intersected(visible);
      }
    }
    cells_.push_back(std::move(cell));
    return true;
  }

  bool isFull() const { return cells_.size() >= mostCells; }
  std::vector<PlainItem::Description> take() { return std::move(cells_); }

 private:
  const QAbstractItemView& view_;
  const QRect viewport_;
  std::vector<PlainItem::Description> cells_;
};

std::vector<int> visibleColumns(const QHeaderView& header) {
  std::vector<int> columns;
  const int width = header.viewport()->width();
  for (int visual = 0; visual < header.count(); ++visual) {
    const int column = header.logicalIndex(visual);
    if (header.isSectionHidden(column)) {
      continue;
    }
    const int left = header.sectionViewportPosition(column);
    if (left < width && left + header.sectionSize(column) > 0) {
      columns.push_back(column);
    }
  }
  return columns;
}

void collectTable(const QTableView& table, CellCollector& cells) {
  const std::vector<int> columns = visibleColumns(*table.horizontalHeader());
  const QHeaderView& rows = *table.verticalHeader();
  const int height = table.viewport()->height();
  int first = rows.visualIndexAt(0);
  int last = rows.visualIndexAt(height - 1);
  first = first < 0 ? 0 : first;
  last = last < 0 ? rows.count() - 1 : last;
  for (int visual = first; visual <= last && !cells.isFull(); ++visual) {
    const int row = rows.logicalIndex(visual);
    if (row < 0 || rows.isSectionHidden(row)) {
      continue;
    }
    for (const int column : columns) {
      cells.add(table.model()->index(row, column, table.rootIndex()));
    }
  }
}

/// The topmost row that can be seen. Only where there are columns there are rows.
QModelIndex firstVisibleRow(const QTreeView& tree, const std::vector<int>& columns) {
  for (const int column : columns) {
    const int left = std::max(tree.columnViewportPosition(column), 0);
    const QModelIndex row = tree.indexAt(QPoint(left, 0));
    if (row.isValid()) {
      return row;
    }
  }
  return {};
}

void collectTree(const QTreeView& tree, CellCollector& cells) {
  const std::vector<int> columns = visibleColumns(*tree.header());
  const int height = tree.viewport()->height();
  for (QModelIndex row = firstVisibleRow(tree, columns); row.isValid() && !cells.isFull();
       row = tree.indexBelow(row)) {
    const QModelIndex first = row.siblingAtColumn(0);
    if (tree.visualRect(row).top() >= height) {
      break;
    }
    if (tree.isFirstColumnSpanned(row.row(), row.parent())) {
      cells.add(first);
      continue;
    }
    for (const int column : columns) {
      cells.add(row.siblingAtColumn(column));
    }
  }
}

void collectList(const QListView& list, CellCollector& cells) {
  const QAbstractItemModel& model = *list.model();
  const int count = model.rowCount(list.rootIndex());
  const auto rectOf = [&](int row) {
    return list.visualRect(model.index(row, list.modelColumn(), list.rootIndex()));
  };
  const bool isPlainColumn = list.viewMode() == QListView::ListMode &&
                             list.flow() == QListView::TopToBottom && !list.isWrapping();
  int first = 0;
  if (isPlainColumn) {
    // Rows follow each other downwards: the first visible one is found by halving. Hidden rows
    // stand nowhere and say nothing of those around them.
    int last = count;
    while (first < last) {
      const int middle = first + (last - first) / 2;
      int shown = middle;
      while (shown < last && list.isRowHidden(shown)) {
        ++shown;
      }
      if (shown < last && rectOf(shown).bottom() < 0) {
        first = shown + 1;
      } else {
        last = middle;
      }
    }
  }
  for (int row = first; row < count && !cells.isFull(); ++row) {
    if (list.isRowHidden(row)) {
      continue;
    }
    if (!cells.add(model.index(row, list.modelColumn(), list.rootIndex())) && isPlainColumn) {
      break;
    }
  }
}

/// A view of the application's own: what stands at points of a grid.
void collectAny(const QAbstractItemView& view, CellCollector& cells) {
  constexpr int step = 8;
  QList<QModelIndex> seen;
  for (int y = 0; y < view.viewport()->height(); y += step) {
    for (int x = 0; x < view.viewport()->width(); x += step) {
      const QModelIndex index = view.indexAt(QPoint(x, y));
      if (index.isValid() && !seen.contains(index)) {
        seen.push_back(index);
        cells.add(index);
      }
    }
  }
}

}  // namespace

std::vector<PlainItem::Description> visibleCells(const QAbstractItemView& widget) {
  if (widget.model() == nullptr || widget.viewport() == nullptr ||
      !widget.viewport()->isVisible()) {
    return {};
  }
  CellCollector cells(widget);
  if (const auto* table = qobject_cast<const QTableView*>(&widget)) {
    collectTable(*table, cells);
  } else if (const auto* tree = qobject_cast<const QTreeView*>(&widget)) {
    collectTree(*tree, cells);
  } else if (const auto* list = qobject_cast<const QListView*>(&widget)) {
    collectList(*list, cells);
  } else {
    collectAny(widget, cells);
  }
  return cells.take();
}

}  // namespace tarnix::qt6
