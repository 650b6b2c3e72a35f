#include "platforms/qt6/quick/item_scrolling.h"

#include <QPointer>
#include <QQuickItem>
#include <algorithm>

#include "platforms/qt6/shared/class_name.h"
#include "platforms/qt6/shared/offset_animation.h"

namespace tarnix::qt6::item_scrolling {

namespace {

/// How far past its end a flickable that gives way is dragged, as a part of its own size.
constexpr double mostOverScroll = 0.25;

struct AxisNames {
  const char* position;
  const char* origin;
  const char* contentSize;
  const char* size;
  const char* leadingMargin;
  const char* trailingMargin;
  /// Of `flickableDirection`.
  int direction;
};

constexpr AxisNames horizontalNames = {
    "contentX", "originX", "contentWidth", "width", "leftMargin", "rightMargin", 1};
constexpr AxisNames verticalNames = {
    "contentY", "originY", "contentHeight", "height", "topMargin", "bottomMargin", 2};

/// One direction of a flickable.
struct Axis {
  Axis(const QQuickItem& item, const AxisNames& names) {
    const auto number = [&](const char* name) { return item.property(name).toReal(); };
    position = number(names.position);
    size = number(names.size);
    minimum = number(names.origin) - number(names.leadingMargin);
    maximum = std::max(minimum, number(names.origin) + number(names.contentSize) +
                                    number(names.trailingMargin) - size);
    const int direction = item.property("flickableDirection").toInt();
    constexpr int eitherWayThatFits = 0;
    constexpr int eitherWayIfNeeded = 0x0C;
    const bool isAllowed = direction == eitherWayThatFits || direction == eitherWayIfNeeded ||
                           (direction & names.direction) != 0;
    canMove = isAllowed && maximum > minimum;
    constexpr int dragOverBounds = 1;
    if ((item.property("boundsBehavior").toInt() & dragOverBounds) != 0) {
      overScroll = size * mostOverScroll;
    }
  }

  double reached(double offset) const {
    return canMove ? std::clamp(offset, minimum - overScroll, maximum + overScroll) : position;
  }

  double position = 0;
  double size = 0;
  double minimum = 0;
  double maximum = 0;
  double overScroll = 0;
  bool canMove = false;
};

bool isFlickable(const QQuickItem& item) {
  return isDerivedFrom(item.metaObject(), "QQuickFlickable") &&
         item.property("interactive").toBool() && item.isEnabled();
}

QQuickItem* flickableAround(const QQuickItem& item) {
  for (QQuickItem* outer = item.parentItem(); outer != nullptr; outer = outer->parentItem()) {
    if (canScroll(*outer)) {
      return outer;
    }
  }
  return nullptr;
}

}  // namespace

bool canScroll(const QQuickItem& item) {
  return isFlickable(item) &&
         (Axis(item, horizontalNames).canMove || Axis(item, verticalNames).canMove);
}

QPointF offset(const QQuickItem& item) {
  return offset_animation::target(item).value_or(
      QPointF(Axis(item, horizontalNames).position, Axis(item, verticalNames).position));
}

void scrollTo(QQuickItem& item, QPointF offset) {
  const Axis horizontal(item, horizontalNames);
  const Axis vertical(item, verticalNames);
  const QPointF from(horizontal.position, vertical.position);
  const QPointF wanted = offset - item_scrolling::offset(item);
  const QPointF beyond(horizontal.canMove ? 0 : wanted.x(), vertical.canMove ? 0 : wanted.y());
  if (!beyond.isNull()) {
    if (QQuickItem* const outer = flickableAround(item)) {
      scrollTo(*outer, item_scrolling::offset(*outer) + beyond);
    }
  }
  const QPointF to(horizontal.reached(offset.x()), vertical.reached(offset.y()));
  if (to == from && !offset_animation::target(item)) {
    return;
  }
  // A flick of before would go on moving it.
  QMetaObject::invokeMethod(&item, "cancelFlick", Qt::DirectConnection);
  const QPointer scrolled(&item);
  offset_animation::start(
      item, from, to,
      [scrolled, movesX = horizontal.canMove, movesY = vertical.canMove](QPointF place) {
        if (scrolled != nullptr && movesX) {
          scrolled->setProperty("contentX", place.x());
        }
        if (scrolled != nullptr && movesY) {
          scrolled->setProperty("contentY", place.y());
        }
      },
      [scrolled] {
        // Also makes a view that stops at its items only do so.
        if (scrolled != nullptr) {
          QMetaObject::invokeMethod(scrolled, "returnToBounds", Qt::DirectConnection);
        }
      });
}

}  // namespace tarnix::qt6::item_scrolling
