#pragma once

#include <vector>

#include "platforms/qt6/shared/plain_item.h"

class QTabBar;

namespace tarnix::qt6 {

/// The tabs that can be seen, in the coordinates of the widget. Main thread.
std::vector<PlainItem::Description> visibleTabs(const QTabBar& widget);

}  // namespace tarnix::qt6
