#pragma once

#include <QRectF>
#include <cmath>

#include "probe/platform/geometry.h"

namespace tarnix::qt6 {

/// `area` as the core takes it. Applications compute positions, and some divide by zero while they
/// start: what no screen could hold becomes an empty frame.
inline platform::Rect frameOf(const QRectF& area) {
  constexpr double largest = 1e9;
  const auto isSane = [](double value) {
    return std::isfinite(value) && std::abs(value) < largest;
  };
  if (!isSane(area.x()) || !isSane(area.y()) || !isSane(area.width()) || !isSane(area.height()) ||
      area.width() < 0 || area.height() < 0) {
    return {};
  }
  return {{area.x(), area.y()}, {area.width(), area.height()}};
}

inline QRectF rectOf(const platform::Rect& frame) {
  return {frame.origin.x, frame.origin.y, frame.size.width, frame.size.height};
}

}  // namespace tarnix::qt6
