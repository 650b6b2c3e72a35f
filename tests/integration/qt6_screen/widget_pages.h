#pragma once

#include <QString>

namespace tarnix::integration {

/// Opens a window of widgets to try things on: "controls", "views", "containers", "menu", "combo",
/// "dialog", "quick" or "many". Whether there is such a page. Its windows are the caller's to
/// delete, among the application's top-level widgets.
bool showWidgetPage(const QString& name);

}  // namespace tarnix::integration
