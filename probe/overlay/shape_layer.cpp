#include "probe/overlay/shape_layer.h"

#include <algorithm>
#include <cmath>

namespace tarnix::overlay {

namespace {

double distance(platform::Point from, platform::Point to) {
  return std::hypot(to.x - from.x, to.y - from.y);
}

double lengthOf(const ShapeLayer::Lines& lines) {
  double length = 0;
  for (const std::vector<platform::Point>& line : lines) {
    for (std::size_t at = 1; at < line.size(); ++at) {
      length += distance(line[at - 1], line[at]);
    }
  }
  return length;
}

/// The first `length` of the lines.
ShapeLayer::Lines beginningOf(const ShapeLayer::Lines& lines, double length) {
  ShapeLayer::Lines result;
  for (const std::vector<platform::Point>& line : lines) {
    if (line.empty() || length < 0) {
      break;
    }
    std::vector<platform::Point>& drawn = result.emplace_back();
    drawn.push_back(line.front());
    for (std::size_t at = 1; at < line.size() && length >= 0; ++at) {
      const platform::Point from = line[at - 1];
      const platform::Point to = line[at];
      const double whole = distance(from, to);
      const double part = whole <= length ? 1 : length / whole;
      drawn.push_back({from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part});
      length = whole <= length ? length - whole : -1;
    }
  }
  return result;
}

}  // namespace

std::optional<platform::Shape> ShapeLayer::content(double now) const {
  const double part = std::clamp(valueSeen(Property::strokeEnd, now), 0.0, 1.0);
  if (part <= 0 || lines_.empty()) {
    return std::nullopt;
  }
  return platform::Stroke{part < 1 ? beginningOf(lines_, lengthOf(lines_) * part) : lines_,
                          lineWidth, strokeColor};
}

}  // namespace tarnix::overlay
