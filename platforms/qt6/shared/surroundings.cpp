#include "platforms/qt6/shared/surroundings.h"

#include <algorithm>

namespace tarnix::qt6 {

namespace {

// Less than this of a thing tells nobody what it is. Device-independent pixels.
constexpr double smallestSeen = 12;

/// The largest rectangle of a region.
QRect largestPart(const QRegion& region) {
  QRect largest;
  for (const QRect& part : region) {
    if (qint64{part.width()} * part.height() > qint64{largest.width()} * largest.height()) {
      largest = part;
    }
  }
  return largest;
}

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

QRectF Surroundings::shownPart(const QRectF& area) const {
  const QRectF clipped = clip ? clip->intersected(area) : area;
  return scroller ? scroller->intersected(clipped) : clipped;
}

void Surroundings::cover(const QRegion& region) {
  covered += scroller ? region.intersected(scroller->toAlignedRect()) : region;
}

QRectF Surroundings::visiblePart(const QRectF& area) const {
  QRectF seen = clip ? clip->intersected(area) : area;
  if (const QRect pixels = seen.toAlignedRect(); covered.intersects(pixels)) {
    seen = seen.intersected(largestPart(QRegion(pixels).subtracted(covered)));
  }
  return isEnough(seen.width(), area.width()) && isEnough(seen.height(), area.height()) ? seen
                                                                                        : QRectF();
}

}  // namespace tarnix::qt6
