#pragma once

#include <QRectF>

#include "platforms/qt6/widgets/widget_class.h"

namespace tarnix::qt6 {

/// The part of a widget that is the thing a person would point at, in the widget's own coordinates:
/// a check box reacts on its box and text, however wide the layout makes it; a group has its title.
/// Main thread.
QRectF areaOf(const QWidget& widget, WidgetKind kind);

}  // namespace tarnix::qt6
