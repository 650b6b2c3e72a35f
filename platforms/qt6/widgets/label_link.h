#pragma once

#include <QPoint>
#include <vector>

#include "platforms/qt6/shared/plain_item.h"

class QLabel;

namespace tarnix::qt6 {

/// Whether a link of the label's text stands at `point` that a press would follow. Main thread.
bool hasLinkAt(const QLabel& label, QPoint point);

/// The links inside the text of a label, in its coordinates. None for a label that is one link as a
/// whole. Main thread.
std::vector<PlainItem::Description> linksOf(const QLabel& label);

}  // namespace tarnix::qt6
