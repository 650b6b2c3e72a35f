#pragma once

#include <vector>

#include "platforms/qt6/shared/plain_item.h"

class QTextEdit;

namespace tarnix::qt6 {

/// The links of a text that can be followed and are in view, in the coordinates of the widget. One
/// that goes over several lines is where it begins. Main thread.
std::vector<PlainItem::Description> visibleLinks(const QTextEdit& widget);

}  // namespace tarnix::qt6
