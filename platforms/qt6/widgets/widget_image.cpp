#include "platforms/qt6/widgets/widget_image.h"

#include <QBackingStore>
#include <QPainter>
#include <QWidget>
#include <QWindow>

#include "platforms/qt6/shared/user_interface_part.h"
#include "platforms/qt6/widgets/embedded_scene.h"
#include "platforms/qt6/widgets/picture_watch.h"

namespace tarnix::qt6 {

namespace {

/// Visible widgets inside `window` that are not drawn by painting them.
struct OtherContent {
  bool hasTextures = false;
  QList<QWidget*> containers;
};

OtherContent otherContentOf(const QWidget& window) {
  OtherContent result;
  for (QWidget* widget : window.findChildren<QWidget*>()) {
    if (widget->window() != &window || !widget->isVisible()) {
      continue;
    }
    const WidgetKind kind = classOf(*widget).kind;
    if (kind == WidgetKind::windowContainer) {
      result.containers.append(widget);
    } else if (kind == WidgetKind::quickWidget || widget->inherits("QOpenGLWidget")) {
      result.hasTextures = true;
    }
  }
  return result;
}

QSize sizeInPixels(const QWidget& window, double scale) {
  return (QSizeF(window.size()) * scale).toSize();
}

/// The pixels that went to the screen last. Absent where the platform keeps them elsewhere.
QImage paintedPixels(const QWidget& window) {
  QBackingStore* const store = window.backingStore();
  // The toolkit does not look whether there is a picture before it gives it.
  if (store == nullptr || !PictureWatch::shared().hasPicture(*store) ||
      !PictureWatch::shared().outdated(*store).isEmpty()) {
    return {};
  }
  const QPaintDevice* const device = store->paintDevice();
  if (device == nullptr || device->devType() != QInternal::Image) {
    return {};
  }
  const QImage& image = *static_cast<const QImage*>(device);
  const QSize size = sizeInPixels(window, image.devicePixelRatio());
  // After a change of size that was not painted yet it is of the old one.
  if (image.width() < size.width() || image.height() < size.height()) {
    return {};
  }
  return image.copy(QRect(QPoint(0, 0), size));
}

/// Has the widgets paint themselves, which lays nothing out in a window that is shown.
QImage repainted(QWidget& window) {
  const double scale = window.devicePixelRatioF();
  QImage image(sizeInPixels(window, scale), QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) {
    return {};
  }
  image.setDevicePixelRatio(scale);
  image.fill(Qt::transparent);
  window.render(&image);
  return image;
}

}  // namespace

QImage lastImageOf(QWidget& window, ViewSource& source) {
  if (!window.isVisible() || window.size().isEmpty()) {
    return {};
  }
  const OtherContent other = otherContentOf(window);
  QImage image = other.hasTextures ? QImage() : paintedPixels(window);
  if (image.isNull()) {
    image = repainted(window);
  }
  if (image.isNull() || other.containers.isEmpty()) {
    return image;
  }
  image.convertTo(QImage::Format_ARGB32_Premultiplied);
  QPainter painter(&image);
  for (const QWidget* container : other.containers) {
    QWindow* const inside = embeddedWindow(*container, WidgetKind::windowContainer);
    if (inside != nullptr && inside->isVisible()) {
      painter.drawImage(container->mapTo(&window, QPoint(0, 0)), source.lastImage(*inside));
    }
  }
  return image;
}

}  // namespace tarnix::qt6
