#pragma once

#include <vector>

#include "platforms/qt6/shared/plain_item.h"

class QMenu;
class QMenuBar;

namespace tarnix::qt6 {

/// The entries that can be seen, in the coordinates of the widget. Main thread.
std::vector<PlainItem::Description> visibleEntries(const QMenu& menu);
std::vector<PlainItem::Description> visibleEntries(const QMenuBar& menuBar);

}  // namespace tarnix::qt6
