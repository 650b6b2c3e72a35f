#pragma once

#include <vector>

#include "platforms/qt6/shared/plain_item.h"

class QHeaderView;

namespace tarnix::qt6 {

/// The sections of a header that can be seen, in the coordinates of the widget. Main thread.
std::vector<PlainItem::Description> visibleSections(const QHeaderView& widget);

}  // namespace tarnix::qt6
