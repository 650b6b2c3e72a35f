#pragma once

#include "platforms/qt6/widgets/widget_class.h"

class QWindow;

namespace tarnix::qt6 {

/// Whether widgets of this kind show a window in their place.
bool showsWindow(WidgetKind kind);

/// The window that a widget shows in its place: the scene of a Quick widget, or what a window
/// container contains. Null for any other widget. Main thread.
QWindow* embeddedWindow(const QWidget& widget, WidgetKind kind);

}  // namespace tarnix::qt6
