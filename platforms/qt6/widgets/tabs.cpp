#include "platforms/qt6/widgets/tabs.h"

#include <QTabBar>

#include "platforms/qt6/shared/visible_text.h"

namespace tarnix::qt6 {

namespace {

namespace traits = platform::accessibility_traits;

QString labelOfTab(const QTabBar& bar, int index) {
  for (const QString& label : {withoutMnemonic(bar.tabText(index), ParenthesisedMnemonic::shown),
                               bar.accessibleTabName(index), plainText(bar.tabToolTip(index))}) {
    if (!label.trimmed().isEmpty()) {
      return label;
    }
  }
  return {};
}

}  // namespace

std::vector<PlainItem::Description> visibleTabs(const QTabBar& widget) {
  std::vector<PlainItem::Description> tabs;
  for (int index = 0; index < widget.count(); ++index) {
    const QRect area = widget.tabRect(index).intersected(widget.rect());
    if (!widget.isTabVisible(index) || area.isEmpty()) {
      continue;
    }
    PlainItem::Description tab;
    tab.label = labelOfTab(widget, index);
    tab.area = area;
    tab.traits = traits::button;
    if (index == widget.currentIndex()) {
      tab.traits |= traits::selected;
    }
    if (!widget.isEnabled() || !widget.isTabEnabled(index)) {
      tab.traits |= traits::notEnabled;
    }
    tabs.push_back(std::move(tab));
  }
  return tabs;
}

}  // namespace tarnix::qt6
