#include "platforms/qt6/quick/path_scrolling.h"

#include <QPointer>
#include <QQuickItem>
#include <algorithm>
#include <cmath>
#include <limits>

#include "platforms/qt6/shared/class_name.h"
#include "platforms/qt6/shared/offset_animation.h"

namespace tarnix::qt6::path_scrolling {

namespace {

/// How many places of a path are compared to find the one that is nearest to a finger.
constexpr int placesOnPath = 400;

/// From 0, where the path begins, to 1.
double placeNearestTo(QObject& path, QPointF point) {
  double nearest = 0;
  double leastDistance = std::numeric_limits<double>::infinity();
  for (int step = 0; step <= placesOnPath; ++step) {
    const double place = static_cast<double>(step) / placesOnPath;
    QPointF candidate;
    QMetaObject::invokeMethod(&path, "pointAtPercent", Qt::DirectConnection,
                              Q_RETURN_ARG(QPointF, candidate), Q_ARG(qreal, place));
    const QPointF between = candidate - point;
    const double distance = QPointF::dotProduct(between, between);
    if (distance < leastDistance) {
      leastDistance = distance;
      nearest = place;
    }
  }
  return nearest;
}

bool stopsAtItems(const QQuickItem& item) {
  constexpr int noSnap = 0;
  constexpr int strictlyEnforceRange = 2;
  return item.property("snapMode").toInt() != noSnap ||
         item.property("highlightRangeMode").toInt() == strictlyEnforceRange;
}

}  // namespace

bool canScroll(const QQuickItem& item) {
  return isDerivedFrom(item.metaObject(), "QQuickPathView") && item.isEnabled() &&
         item.property("interactive").toBool() && item.property("count").toInt() > 0 &&
         item.property("path").value<QObject*>() != nullptr;
}

void scrollBy(QQuickItem& item, QPointF point, QPointF distance) {
  auto* const path = item.property("path").value<QObject*>();
  if (path == nullptr) {
    return;
  }
  const int count = item.property("count").toInt();
  const int mostOnPath = item.property("pathItemCount").toInt();
  double moved = (placeNearestTo(*path, point - distance) - placeNearestTo(*path, point)) *
                 (mostOnPath > 0 ? std::min(mostOnPath, count) : count);
  // On a path that ends where it begins, the other way round may be the shorter one.
  if (std::abs(moved) > count / 2.0) {
    moved -= std::copysign(count, moved);
  }
  const double from = item.property("offset").toReal();
  const auto target = offset_animation::target(item);
  double to = (target ? target->x() : from) + moved;
  if (stopsAtItems(item)) {
    to = std::round(to);
  }
  offset_animation::start(
      item, {from, 0}, {to, 0},
      [scrolled = QPointer(&item)](QPointF place) {
        if (scrolled != nullptr) {
          scrolled->setProperty("offset", place.x());
        }
      },
      nullptr);
}

}  // namespace tarnix::qt6::path_scrolling
