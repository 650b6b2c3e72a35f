#include "platforms/qt6/shared/out_of_focus.h"

#include <QBrush>
#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QTransform>
#include <algorithm>
#include <cmath>

namespace tarnix::qt6 {

namespace {

/// What the painter paints into, when that is pixels in memory. Behind what is painted lies what
/// the picture already has.
const QImage* pictureOf(const QPainter& painter) {
  const QPaintEngine* const engine = painter.paintEngine();
  const QPaintDevice* const device = engine == nullptr ? nullptr : engine->paintDevice();
  return device != nullptr && device->devType() == QInternal::Image
             ? static_cast<const QImage*>(device)
             : nullptr;
}

/// Averages over squares, then draws smoothly between them: what a person cannot tell from a true
/// blur at a fraction of its cost.
QImage blurred(const QImage& image, double radius) {
  const QSize squares(std::max(1, static_cast<int>(std::lround(image.width() / radius))),
                      std::max(1, static_cast<int>(std::lround(image.height() / radius))));
  return image.scaled(squares, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
      .scaled(image.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

}  // namespace

void paintOutOfFocus(QPainter& painter, const QPainterPath& path, double radius) {
  const QImage* const picture = pictureOf(painter);
  if (picture == nullptr) {
    return;
  }
  const QTransform toPixels = painter.deviceTransform();
  const QRect area =
      toPixels.mapRect(path.boundingRect()).toAlignedRect() & QRect(QPoint(0, 0), picture->size());
  const double pixelRadius = radius * std::abs(toPixels.m11());
  if (area.isEmpty() || pixelRadius < 1) {
    return;
  }
  QImage behind = picture->copy(area);
  behind.setDevicePixelRatio(1);
  QBrush brush(blurred(behind, pixelRadius));
  brush.setTransform(QTransform::fromTranslate(area.x(), area.y()) * toPixels.inverted());
  painter.fillPath(path, brush);
}

}  // namespace tarnix::qt6
