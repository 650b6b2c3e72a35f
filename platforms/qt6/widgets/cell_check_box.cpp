#include "platforms/qt6/widgets/cell_check_box.h"

#include <QAbstractItemView>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QStyledItemDelegate>

namespace tarnix::qt6 {

namespace {

// How a cell describes itself to its style is for derived classes only.
struct OpenView : QAbstractItemView {
  static QStyleOptionViewItem option(const QAbstractItemView& view) {
    QStyleOptionViewItem result;
    (view.*&OpenView::initViewItemOption)(&result);
    return result;
  }
};

struct OpenDelegate : QStyledItemDelegate {
  static void complete(const QStyledItemDelegate& delegate, QStyleOptionViewItem& option,
                       const QModelIndex& index) {
    (delegate.*&OpenDelegate::initStyleOption)(&option, index);
  }
};

}  // namespace

QRect checkBoxOf(const QAbstractItemView& view, const QModelIndex& index) {
  const auto* const delegate =
      qobject_cast<const QStyledItemDelegate*>(view.itemDelegateForIndex(index));
  const Qt::ItemFlags needed = Qt::ItemIsUserCheckable | Qt::ItemIsEnabled;
  if (delegate == nullptr || (index.flags() & needed) != needed || !view.isEnabled()) {
    return {};
  }
  QStyleOptionViewItem option = OpenView::option(view);
  option.rect = view.visualRect(index);
  OpenDelegate::complete(*delegate, option, index);
  return view.style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, &view);
}

}  // namespace tarnix::qt6
