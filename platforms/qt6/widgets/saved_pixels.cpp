#include "platforms/qt6/widgets/saved_pixels.h"

#include <QRectF>
#include <cstring>

namespace tarnix::qt6 {

namespace {

/// With a margin of one: where a unit is no whole number of pixels, the toolkit's own rounding may
/// take in one more.
QRect pixelsOf(const QRect& rectangle, double scale) {
  const QRectF area(rectangle);
  return QRectF(area.topLeft() * scale, area.size() * scale).toAlignedRect().adjusted(-1, -1, 1, 1);
}

}  // namespace

SavedPixels::SavedPixels(const QImage& picture, const QRegion& region)
    : region_(region), size_(picture.size()), format_(picture.format()) {
  QRegion pixels;
  for (const QRect& rectangle : region) {
    pixels += pixelsOf(rectangle, picture.devicePixelRatio());
  }
  for (const QRect& place : pixels& picture.rect()) {
    parts_.push_back({place, picture.copy(place)});
  }
}

bool SavedPixels::areOf(const QImage& picture) const {
  return !isEmpty() && picture.size() == size_ && picture.format() == format_;
}

void SavedPixels::putBack(QImage& picture) const {
  const auto bytes = [&picture](int pixels) {
    return static_cast<std::size_t>(pixels) * static_cast<std::size_t>(picture.depth() / 8);
  };
  for (const Part& part : parts_) {
    for (int row = 0; row < part.place.height(); ++row) {
      std::memcpy(picture.scanLine(part.place.y() + row) + bytes(part.place.x()),
                  part.pixels.constScanLine(row), bytes(part.place.width()));
    }
  }
}

}  // namespace tarnix::qt6
