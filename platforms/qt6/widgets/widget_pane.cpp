#include "platforms/qt6/widgets/widget_pane.h"

#include <QBackingStore>
#include <QImage>
#include <QPainter>
#include <QWindow>
#include <algorithm>
#include <utility>
#include <vector>

#include "platforms/qt6/shared/figure_painter.h"

namespace tarnix::qt6 {

namespace {

QImage* imageOf(QBackingStore& store) {
  QPaintDevice* const device = store.paintDevice();
  return device != nullptr && device->devType() == QInternal::Image ? static_cast<QImage*>(device)
                                                                    : nullptr;
}

/// The windows inside `window` that show parts of its picture.
QList<QWindow*> partsOf(const QWindow& window) {
  QList<QWindow*> result;
  for (QWindow* inner : window.findChildren<QWindow*>()) {
    if (!inner->isTopLevel() && inner->isExposed() && inner->inherits("QWidgetWindow")) {
      result.append(inner);
    }
  }
  return result;
}

QPoint placeIn(const QWindow& window, const QWindow& part) {
  QPoint result;
  for (const QWindow* each = &part; each != nullptr && each != &window; each = each->parent()) {
    result += each->position();
  }
  return result;
}

/// Whether the toolkit sends the picture as it is. Else it is put together with others on the
/// graphics card.
bool isSentAsItIs(const QWindow& window) {
  const QList<QWindow*> parts = partsOf(window);
  return window.surfaceType() == QSurface::RasterSurface &&
         std::all_of(parts.begin(), parts.end(), [](const QWindow* part) {
           return part->surfaceType() == QSurface::RasterSurface;
         });
}

/// Has all widgets that show something in `region` paint it with the next frame. The toolkit asks
/// nobody else where a widget says that it is opaque.
void repaint(QWidget& widget, const QRegion& region) {
  widget.update(region);
  for (QObject* child : widget.children()) {
    auto* const inner = child->isWidgetType() ? static_cast<QWidget*>(child) : nullptr;
    if (inner != nullptr && !inner->isWindow() && inner->isVisible() &&
        region.intersects(inner->geometry())) {
      repaint(*inner, region.translated(-inner->pos()) & inner->rect());
    }
  }
}

}  // namespace

WidgetPane::WidgetPane(QWidget& host) : host_(&host) { PictureWatch::shared().add(*this); }

WidgetPane::~WidgetPane() {
  PictureWatch::shared().remove(*this);
  const QRegion before = area();
  list_ = nullptr;
  putBack();
  send(before);
}

void WidgetPane::pictureChanges(const PictureChange& change) {
  if (change.backingStore != backingStore()) {
    return;
  }
  using Kind = PictureChange::Kind;
  switch (change.kind) {
    case Kind::willPaint:
    case Kind::willScroll: {
      const auto& region = *static_cast<const QRegion*>(change.region);
      // Where something is scrolled to is told afterwards.
      if (++changesUnderWay_ == 1 &&
          (!isDrawn_ || change.kind == Kind::willScroll || region.intersects(area()))) {
        putBack();
      }
      break;
    }
    case Kind::didPaint:
    case Kind::didScroll:
      // The pane may have come in the middle.
      changesUnderWay_ = std::max(changesUnderWay_ - 1, 0);
      if (changesUnderWay_ == 0 && !isDrawn_) {
        draw();
      }
      if (change.kind == Kind::didScroll && isOutdated()) {
        repaint(*host_, area());
      }
      break;
    case Kind::willBeReplaced:
      putBack();
      break;
  }
}

void WidgetPane::show(std::shared_ptr<const platform::DisplayList> list, QPointF origin) {
  const QRegion before = area();
  list_ = std::move(list);
  origin_ = origin;
  isDrawn_ = false;
  if (host_ == nullptr || host_->windowHandle() == nullptr) {
    return;
  }
  if (changesUnderWay_ == 0 && !isOutdated() && isSentAsItIs(*host_->windowHandle())) {
    draw();
  }
  send(before + area());
}

void WidgetPane::setHiddenForPicture(bool isHidden) {
  isHidden_ = isHidden;
  if (isHidden) {
    putBack();
  } else {
    draw();
  }
}

QBackingStore* WidgetPane::backingStore() const {
  // One that has been put into another window is part of that one's picture.
  return host_ == nullptr || !host_->isWindow() ? nullptr : host_->backingStore();
}

QRegion WidgetPane::area() const {
  QRegion result;
  if (list_ != nullptr) {
    for (const platform::Figure& figure : *list_) {
      result += boundsOf(figure).translated(origin_).toAlignedRect().adjusted(-1, -1, 1, 1);
    }
  }
  return result;
}

bool WidgetPane::isOutdated() const {
  const QBackingStore* const store = backingStore();
  return store != nullptr &&
         (area() & host_->rect()).intersects(PictureWatch::shared().outdated(*store));
}

void WidgetPane::draw() {
  QBackingStore* const store = backingStore();
  if (store == nullptr || imageOf(*store) == nullptr || isHidden_ || list_ == nullptr) {
    return;
  }
  const QRegion region = (area() & host_->rect()) - PictureWatch::shared().outdated(*store);
  const bool isSaved = under_.region() == region && under_.areOf(*imageOf(*store));
  if (!isSaved) {
    putBack();
    under_ = SavedPixels(*imageOf(*store), region);
  }
  isDrawn_ = true;
  if (under_.isEmpty()) {
    return;
  }
  const OwnPainting painting(*store, region);
  QImage* const picture = imageOf(*store);
  // It has the last figures, or was cleared.
  if (isSaved || picture->hasAlphaChannel()) {
    under_.putBack(*picture);
  }
  QPainter painter(picture);
  painter.setClipRegion(region);
  painter.translate(origin_);
  for (const platform::Figure& figure : *list_) {
    paintFigure(painter, figure);
  }
}

void WidgetPane::putBack() {
  isDrawn_ = false;
  QBackingStore* const store = backingStore();
  const SavedPixels under = std::exchange(under_, {});
  const QImage* const picture = store == nullptr ? nullptr : imageOf(*store);
  if (picture != nullptr && under.areOf(*picture)) {
    const OwnPainting painting(*store, under.region());
    under.putBack(*imageOf(*store));
  }
}

void WidgetPane::send(const QRegion& region) {
  QWindow* const window = host_ == nullptr ? nullptr : host_->windowHandle();
  QBackingStore* const store = backingStore();
  if (window == nullptr || !window->isExposed() || store == nullptr) {
    return;
  }
  if ((list_ != nullptr && !isDrawn_) || !isSentAsItIs(*window)) {
    repaint(*host_, region);
    return;
  }
  for (QWindow* part : QList<QWindow*>{window} + partsOf(*window)) {
    const QPoint place = placeIn(*window, *part);
    const QRegion seen = region.translated(-place) & QRect(QPoint(0, 0), part->size());
    if (!seen.isEmpty()) {
      store->flush(seen, part, place);
    }
  }
}

}  // namespace tarnix::qt6
