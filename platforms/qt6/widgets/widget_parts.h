#pragma once

#include <QPointF>
#include <memory>
#include <vector>

#include "platforms/qt6/shared/plain_item.h"
#include "platforms/qt6/shared/surroundings.h"
#include "platforms/qt6/widgets/widget_class.h"

namespace tarnix::qt6 {

using PlainItems = std::vector<std::shared_ptr<platform::AccessibilityItem>>;

/// What a widget paints that is no widget: the rows and cells of an item view that can be seen, the
/// sections of a header, tabs, the entries of menus and menu bars, the figures of a scene, the
/// links of a text, and the buttons of a title bar inside a window. `topLeft` is where the widget
/// stands on the screen. Main thread.
PlainItems partsOf(const QWidget& widget, WidgetKind kind, QPointF topLeft,
                   const Surroundings& surroundings);

/// Whether widgets of this kind have parts at all.
bool hasParts(WidgetKind kind);

}  // namespace tarnix::qt6
