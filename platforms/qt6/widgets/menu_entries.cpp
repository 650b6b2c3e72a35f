#include "platforms/qt6/widgets/menu_entries.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QStyle>
#include <QWidgetAction>

#include "platforms/qt6/shared/visible_text.h"

namespace tarnix::qt6 {

namespace {

namespace traits = platform::accessibility_traits;

PlainItem::Description entryOf(const QAction& action, const QRect& area) {
  PlainItem::Description entry;
  // What follows a tab is the shortcut, in a column of its own.
  entry.label = withoutMnemonic(action.text().section(u'\t', 0, 0), ParenthesisedMnemonic::shown);
  if (entry.label.trimmed().isEmpty()) {
    entry.label = plainText(action.toolTip());
  }
  entry.area = area;
  entry.traits = traits::button;
  if (!action.isEnabled()) {
    entry.traits |= traits::notEnabled;
  }
  if (action.isCheckable()) {
    entry.value = action.isChecked() ? QStringLiteral("1") : QStringLiteral("0");
  }
  return entry;
}

template <typename Bar>
std::vector<PlainItem::Description> entriesOf(const Bar& bar, bool showsSectionTitles) {
  std::vector<PlainItem::Description> entries;
  for (const QAction* action : bar.actions()) {
    // An entry that is a widget is among the children.
    if (!action->isVisible() || qobject_cast<const QWidgetAction*>(action) != nullptr) {
      continue;
    }
    const QRect area = bar.actionGeometry(const_cast<QAction*>(action)).intersected(bar.rect());
    if (area.isEmpty()) {
      continue;
    }
    if (!action->isSeparator()) {
      entries.push_back(entryOf(*action, area));
    } else if (showsSectionTitles && !action->text().isEmpty()) {
      PlainItem::Description title = entryOf(*action, area);
      title.traits = traits::header;
      entries.push_back(std::move(title));
    }
  }
  return entries;
}

}  // namespace

std::vector<PlainItem::Description> visibleEntries(const QMenu& menu) {
  const bool showsSectionTitles =
      menu.style()->styleHint(QStyle::SH_Menu_SupportsSections, nullptr, &menu) != 0;
  return entriesOf(menu, showsSectionTitles);
}

std::vector<PlainItem::Description> visibleEntries(const QMenuBar& menuBar) {
  std::vector<PlainItem::Description> entries = entriesOf(menuBar, false);
  // In a bar that is too short this button stands for the entries that do not fit.
  const auto* const extension = menuBar.findChild<const QWidget*>(
      QStringLiteral("qt_menubar_ext_button"), Qt::FindDirectChildrenOnly);
  if (extension != nullptr && extension->isVisible()) {
    std::erase_if(entries, [extension](const PlainItem::Description& entry) {
      return extension->geometry().intersects(entry.area.toAlignedRect());
    });
  }
  return entries;
}

}  // namespace tarnix::qt6
