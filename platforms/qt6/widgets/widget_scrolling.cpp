#include "platforms/qt6/widgets/widget_scrolling.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QPlainTextEdit>
#include <QPointer>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "platforms/qt6/shared/offset_animation.h"

namespace tarnix::qt6::widget_scrolling {

namespace {

bool countsItems(const QAbstractScrollArea& area, Qt::Orientation orientation) {
  if (const auto* const view = qobject_cast<const QAbstractItemView*>(&area)) {
    return (orientation == Qt::Vertical
                ? view->verticalScrollMode()
                : view->horizontalScrollMode()) == QAbstractItemView::ScrollPerItem;
  }
  return orientation == Qt::Vertical && qobject_cast<const QPlainTextEdit*>(&area) != nullptr;
}

/// How far a step of a bar that counts items moves the content, in pixels.
double lengthOfStep(const QAbstractScrollArea& area, Qt::Orientation orientation,
                    const QScrollBar& bar) {
  const bool isVertical = orientation == Qt::Vertical;
  if (const auto* const view = qobject_cast<const QAbstractItemView*>(&area)) {
    const QRect first = view->visualRect(view->indexAt({1, 1}));
    const int length = isVertical ? first.height() : first.width();
    if (length > 0) {
      return length;
    }
  }
  // A page is as many lines as fit.
  const QSize page = area.viewport()->size();
  return std::max(1.0, static_cast<double>(isVertical ? page.height() : page.width()) /
                           std::max(1, bar.pageStep()));
}

/// One direction of a scroll area.
class Axis {
 public:
  Axis(const QAbstractScrollArea& area, Qt::Orientation orientation)
      : bar_(orientation == Qt::Vertical ? *area.verticalScrollBar()
                                         : *area.horizontalScrollBar()) {
    if (countsItems(area, orientation)) {
      pixelsPerStep_ = lengthOfStep(area, orientation, bar_);
    }
  }

  bool canMove() const { return bar_.minimum() < bar_.maximum(); }
  double offset() const { return bar_.value() * pixelsPerStep_; }
  double clamped(double offset) const {
    return std::clamp(offset, bar_.minimum() * pixelsPerStep_, bar_.maximum() * pixelsPerStep_);
  }
  void apply(double offset) const {
    const double steps = std::clamp(offset / pixelsPerStep_, static_cast<double>(bar_.minimum()),
                                    static_cast<double>(bar_.maximum()));
    bar_.setValue(static_cast<int>(std::lround(steps)));
  }

 private:
  QScrollBar& bar_;
  double pixelsPerStep_ = 1;
};

QAbstractScrollArea* areaAround(const QWidget& widget) {
  for (QWidget* outer = widget.isWindow() ? nullptr : widget.parentWidget(); outer != nullptr;
       outer = outer->isWindow() ? nullptr : outer->parentWidget()) {
    auto* const area = qobject_cast<QAbstractScrollArea*>(outer);
    if (area != nullptr && canScroll(*area)) {
      return area;
    }
  }
  return nullptr;
}

}  // namespace

bool canScroll(const QAbstractScrollArea& area) {
  return Axis(area, Qt::Horizontal).canMove() || Axis(area, Qt::Vertical).canMove();
}

QPointF offset(const QAbstractScrollArea& area) {
  return offset_animation::target(area).value_or(
      QPointF(Axis(area, Qt::Horizontal).offset(), Axis(area, Qt::Vertical).offset()));
}

void scrollTo(QAbstractScrollArea& area, QPointF offset) {
  const Axis horizontal(area, Qt::Horizontal);
  const Axis vertical(area, Qt::Vertical);
  const QPointF from(horizontal.offset(), vertical.offset());
  const QPointF wanted = offset - widget_scrolling::offset(area);
  const QPointF beyond(horizontal.canMove() ? 0 : wanted.x(), vertical.canMove() ? 0 : wanted.y());
  if (!beyond.isNull()) {
    if (QAbstractScrollArea* const outer = areaAround(area)) {
      scrollTo(*outer, widget_scrolling::offset(*outer) + beyond);
    }
  }
  const QPointF to(horizontal.clamped(offset.x()), vertical.clamped(offset.y()));
  if (to == from && !offset_animation::target(area)) {
    return;
  }
  offset_animation::start(
      area, from, to,
      [scrolled = QPointer(&area)](QPointF place) {
        if (scrolled != nullptr) {
          Axis(*scrolled, Qt::Horizontal).apply(place.x());
        }
        if (scrolled != nullptr) {
          Axis(*scrolled, Qt::Vertical).apply(place.y());
        }
      },
      nullptr);
}

}  // namespace tarnix::qt6::widget_scrolling
