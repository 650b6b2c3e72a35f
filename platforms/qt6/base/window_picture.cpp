#include "platforms/qt6/base/window_picture.h"

#include <QImage>
#include <QPainter>
#include <QRegion>
#include <QWindow>
#include <memory>
#include <utility>

#include "platforms/qt6/base/part_loader.h"

namespace tarnix::qt6 {

namespace {

void paintPopup(QPainter& painter, QWindow& popup, QPoint topLeft) {
  const QImage image = PartLoader::shared().lastImage(popup);
  if (image.isNull()) {
    return;
  }
  const QRect area(topLeft, popup.size());
  const QRegion mask = popup.mask();
  painter.setOpacity(popup.opacity());
  if (mask.isEmpty()) {
    painter.setClipRect(area);
  } else {
    painter.setClipRegion(mask.translated(topLeft));
  }
  painter.drawImage(topLeft, image);
}

}  // namespace

std::optional<platform::Picture> pictureOf(QWindow& window, const QList<QWindow*>& popups) {
  auto image = std::make_shared<QImage>(PartLoader::shared().lastImage(window));
  if (image->isNull()) {
    return std::nullopt;
  }
  image->convertTo(QImage::Format_ARGB32_Premultiplied);
  if (!popups.isEmpty()) {
    QPainter painter(image.get());
    for (QWindow* popup : popups) {
      paintPopup(painter, *popup,
                 popup->mapToGlobal(QPoint(0, 0)) - window.mapToGlobal(QPoint(0, 0)));
    }
  }
  platform::Picture picture;
  picture.width = static_cast<std::uint32_t>(image->width());
  picture.height = static_cast<std::uint32_t>(image->height());
  picture.stride = static_cast<std::size_t>(image->bytesPerLine());
  const std::uint8_t* const pixels = image->constBits();
  picture.pixels = std::shared_ptr<const std::uint8_t>(std::move(image), pixels);
  return picture;
}

}  // namespace tarnix::qt6
