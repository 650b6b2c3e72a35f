#include "platforms/qt6/widgets/widget_parts.h"

#include <QAbstractItemView>
#include <QGraphicsView>
#include <QHeaderView>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>
#include <QTextEdit>

#include "platforms/qt6/shared/spoken_label.h"
#include "platforms/qt6/widgets/graphics_figures.h"
#include "platforms/qt6/widgets/header_sections.h"
#include "platforms/qt6/widgets/item_view_cells.h"
#include "platforms/qt6/widgets/label_link.h"
#include "platforms/qt6/widgets/menu_entries.h"
#include "platforms/qt6/widgets/tabs.h"
#include "platforms/qt6/widgets/text_links.h"
#include "platforms/qt6/widgets/title_bar_buttons.h"

namespace tarnix::qt6 {

bool hasParts(WidgetKind kind) {
  switch (kind) {
    case WidgetKind::itemView:
    case WidgetKind::header:
    case WidgetKind::tabBar:
    case WidgetKind::menuBar:
    case WidgetKind::menu:
    case WidgetKind::graphicsView:
    case WidgetKind::subWindow:
    case WidgetKind::subWindowControls:
    case WidgetKind::textEdit:
    case WidgetKind::label:
      return true;
    default:
      return false;
  }
}

PlainItems partsOf(const QWidget& widget, WidgetKind kind, QPointF topLeft,
                   const Surroundings& surroundings) {
  std::vector<PlainItem::Description> parts;
  switch (kind) {
    case WidgetKind::itemView:
      parts = visibleCells(static_cast<const QAbstractItemView&>(widget));
      break;
    case WidgetKind::header:
      parts = visibleSections(static_cast<const QHeaderView&>(widget));
      break;
    case WidgetKind::tabBar:
      parts = visibleTabs(static_cast<const QTabBar&>(widget));
      break;
    case WidgetKind::menuBar:
      parts = visibleEntries(static_cast<const QMenuBar&>(widget));
      break;
    case WidgetKind::menu:
      parts = visibleEntries(static_cast<const QMenu&>(widget));
      break;
    case WidgetKind::graphicsView:
      parts = visibleFigures(static_cast<const QGraphicsView&>(widget));
      break;
    case WidgetKind::subWindow:
      parts = titleBarButtons(static_cast<const QMdiSubWindow&>(widget));
      break;
    case WidgetKind::label:
      parts = linksOf(static_cast<const QLabel&>(widget));
      break;
    case WidgetKind::textEdit:
      parts = visibleLinks(static_cast<const QTextEdit&>(widget));
      break;
    case WidgetKind::subWindowControls:
      parts = controlButtons(widget);
      break;
    default:
      break;
  }
  PlainItems result;
  result.reserve(parts.size());
  for (PlainItem::Description& part : parts) {
    part.area = surroundings.visiblePart(part.area.translated(topLeft));
    part.label = inOneLine(std::move(part.label));
    if (!part.area.isEmpty() && !part.label.trimmed().isEmpty()) {
      result.push_back(std::make_shared<PlainItem>(std::move(part)));
    }
  }
  return result;
}

}  // namespace tarnix::qt6
