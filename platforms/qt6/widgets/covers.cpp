#include "platforms/qt6/widgets/covers.h"

#include <QGraphicsEffect>
#include <algorithm>

namespace tarnix::qt6 {

namespace {

// What hides others is large. The rest of many would cost more than it tells.
constexpr std::size_t mostCovers = 8;

bool isOpaque(const QWidget& widget) {
  if (widget.graphicsEffect() != nullptr) {
    return false;
  }
  return widget.testAttribute(Qt::WA_OpaquePaintEvent) ||
         (widget.autoFillBackground() &&
          widget.palette().brush(widget.backgroundRole()).isOpaque());
}

qint64 sizeOf(const QRect& area) { return qint64{area.width()} * area.height(); }

}  // namespace

Covers::Covers(const QWidget& container) {
  const QObjectList& children = container.children();
  for (int position = 0; position < children.size(); ++position) {
    if (!children[position]->isWidgetType()) {
      continue;
    }
    const auto* const widget = static_cast<const QWidget*>(children[position]);
    if (!widget->isWindow() && widget->isVisible() && isOpaque(*widget)) {
      covers_.push_back({widget, widget->geometry(), position});
    }
  }
  if (covers_.size() > mostCovers) {
    std::partial_sort(covers_.begin(), covers_.begin() + mostCovers, covers_.end(),
                      [](const Cover& left, const Cover& right) {
                        return sizeOf(left.area) > sizeOf(right.area);
                      });
    covers_.resize(mostCovers);
  }
}

QRegion Covers::over(const QWidget& child) const {
  QRegion result;
  const QRect area = child.geometry();
  int position = -1;
  for (const Cover& cover : covers_) {
    if (cover.widget == &child || !cover.area.intersects(area)) {
      continue;
    }
    if (position < 0) {
      position = static_cast<int>(child.parentWidget()->children().indexOf(&child));
    }
    if (cover.position > position) {
      const QRegion mask = cover.widget->mask();
      const QRegion shape =
          mask.isEmpty() ? QRegion(cover.area) : mask.translated(cover.widget->pos());
      result += shape.intersected(area);
    }
  }
  return result;
}

}  // namespace tarnix::qt6
