#include "platforms/qt6/widgets/header_sections.h"

#include <QHeaderView>

namespace tarnix::qt6 {

namespace {

namespace traits = platform::accessibility_traits;

QString labelOfSection(const QHeaderView& header, int section) {
  for (const int role : {int{Qt::AccessibleTextRole}, int{Qt::DisplayRole}}) {
    const QString label =
        header.model()->headerData(section, header.orientation(), role).toString();
    if (!label.trimmed().isEmpty()) {
      return label;
    }
  }
  return {};
}

}  // namespace

std::vector<PlainItem::Description> visibleSections(const QHeaderView& widget) {
  std::vector<PlainItem::Description> sections;
  if (widget.model() == nullptr) {
    return sections;
  }
  const bool isHorizontal = widget.orientation() == Qt::Horizontal;
  const QRect viewport = widget.viewport()->geometry();
  const int extent = isHorizontal ? viewport.width() : viewport.height();
  int first = widget.visualIndexAt(0);
  int last = widget.visualIndexAt(extent - 1);
  // Written from right to left the first one stands on the right.
  if (first > last && last >= 0) {
    std::swap(first, last);
  }
  if (first < 0) {
    first = 0;
  }
  if (last < 0) {
    last = widget.count() - 1;
  }
  for (int visual = first; visual <= last; ++visual) {
    const int section = widget.logicalIndex(visual);
    if (section < 0 || widget.isSectionHidden(section)) {
      continue;
    }
    const int position = widget.sectionViewportPosition(section);
    const int size = widget.sectionSize(section);
    const QRect area = isHorizontal ? QRect(position, 0, size, viewport.height())
                                    : QRect(0, position, viewport.width(), size);
    PlainItem::Description description;
    description.label = labelOfSection(widget, section);
    description.area = area.translated(viewport.topLeft()).intersected(viewport);
    description.traits = traits::header;
    if (!widget.isEnabled()) {
      description.traits |= traits::notEnabled;
    }
    sections.push_back(std::move(description));
  }
  return sections;
}

}  // namespace tarnix::qt6
