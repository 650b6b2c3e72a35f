#pragma once

#include <QPoint>

class QLabel;

namespace tarnix::qt6 {

/// Whether a link of the label's text stands at `point` that a press would follow. Main thread.
bool hasLinkAt(const QLabel& label, QPoint point);

}  // namespace tarnix::qt6
