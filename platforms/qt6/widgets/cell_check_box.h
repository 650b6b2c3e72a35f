#pragma once

#include <QRect>

class QAbstractItemView;
class QModelIndex;

namespace tarnix::qt6 {

/// Where the box of a cell is checked and unchecked by a press, in the coordinates of the view's
/// viewport: the rest of the cell does something else. Empty for a cell whose box nobody can check,
/// and where the application draws its cells in a way of its own. Main thread.
QRect checkBoxOf(const QAbstractItemView& view, const QModelIndex& index);

}  // namespace tarnix::qt6
