#pragma once

#include <vector>

#include "platforms/qt6/shared/plain_item.h"

class QAbstractItemView;

namespace tarnix::qt6 {

/// The cells of a list, table or tree that can be seen, in the coordinates of the widget. Main
/// thread.
std::vector<PlainItem::Description> visibleCells(const QAbstractItemView& widget);

}  // namespace tarnix::qt6
