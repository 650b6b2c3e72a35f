#pragma once

#include <QPoint>
#include <vector>

#include "platforms/qt6/shared/plain_item.h"

class QMdiSubWindow;
class QWidget;

namespace tarnix::qt6 {

/// The buttons that the title bar of a window inside an area of windows has, which are painted, in
/// its own coordinates. Main thread.
std::vector<PlainItem::Description> titleBarButtons(const QMdiSubWindow& window);

/// The same of the buttons that stand in the menu bar while such a window fills its area.
std::vector<PlainItem::Description> controlButtons(const QWidget& controls);

}  // namespace tarnix::qt6
