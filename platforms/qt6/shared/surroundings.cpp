#include "platforms/qt6/shared/surroundings.h"

#include <algorithm>

namespace tarnix::qt6 {

namespace {

// Less than this of a thing tells nobody what it is. Device-independent pixels.
constexpr double smallestSeen = 12;

bool isEnough(double seen, double all) { return seen >= std::min(all / 2, smallestSeen); }

}  // namespace

Surroundings Surroundings::unclippedIn(const QRectF& area) const {
  Surroundings result = *this;
  result.scroller = scroller ? scroller->intersected(area) : area;
  if (clip) {
    result.scroller = result.scroller->intersected(*clip);
  }
  result.clip.reset();
  result.covered &= result.scroller->toAlignedRect();
  return result;
}

void Surroundings::cover(const QRegion& region) {
  covered += scroller ? region.intersected(scroller->toAlignedRect()) : region;
}

QRectF Surroundings::visiblePart(const QRectF& area) const {
  QRectF seen = clip ? clip->intersected(area) : area;
  if (const QRect pixels = seen.toAlignedRect(); covered.intersects(pixels)) {
    seen = seen.intersected(QRegion(pixels).subtracted(covered).boundingRect());
  }
  return isEnough(seen.width(), area.width()) && isEnough(seen.height(), area.height()) ? seen
                                                                                        : QRectF();
}

}  // namespace tarnix::qt6
