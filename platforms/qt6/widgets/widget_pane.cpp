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
  // The toolkit looks into its picture before it knows that there is none yet.
  QPaintDevice* const device = store.size().isEmpty() ? nullptr : store.paintDevice();
  return device != nullptr && device->devType() == QInternal::Image ? static_cast<QImage*>(device)
                                                                    : nullptr;
}

/// All that figures touch which have their origin at `origin`.
QRegion areaOf(const platform::DisplayList& list, QPointF origin) {
  QRegion result;
  for (const platform::Figure& figure : list) {
    result += boundsOf(figure).translated(origin).toAlignedRect().adjusted(-1, -1, 1, 1);
  }
  return result;
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
  list_ = nullptr;
  putBack();
  send(area_);
}

void WidgetPane::pictureChanges(const PictureChange& change) {
  if (change.backingStore != backingStore()) {
    return;
  }
  using Kind = PictureChange::Kind;
  switch (change.kind) {
    case Kind::willPaint:
      if (!isDrawn_ || isNearFigures(*static_cast<const QRegion*>(change.region))) {
        putBack();
      }
      break;
    case Kind::willScroll:
      // Where something is scrolled to is told afterwards.
      putBack();
      break;
    case Kind::didPaint:
    case Kind::didScroll:
      if (!isDrawn_ && !isChanging()) {
        draw();
      }
      if (change.kind == Kind::didScroll && isOutdated()) {
        repaint(*host_, area_);
      }
      break;
    case Kind::willBeReplaced:
      putBack();
      break;
  }
}

void WidgetPane::show(std::shared_ptr<const platform::DisplayList> list, QPointF origin) {
  list_ = std::move(list);
  origin_ = origin;
  const QRegion before = std::exchange(area_, areaOf(*list_, origin_));
  isDrawn_ = false;
  if (host_ == nullptr || host_->windowHandle() == nullptr) {
    return;
  }
  if (!isChanging() && !isOutdated() && isSentAsItIs(*host_->windowHandle())) {
    draw();
  }
  send(before + area_);
}

void WidgetPane::setHiddenForPicture(bool isHidden) {
  isHidden_ = isHidden;
  if (isHidden) {
    putBack();
  } else if (!isChanging()) {
    draw();
  }
}

QBackingStore* WidgetPane::backingStore() const {
  // One that has been put into another window is part of that one's picture.
  return host_ == nullptr || !host_->isWindow() ? nullptr : host_->backingStore();
}

bool WidgetPane::isNearFigures(const QRegion& region) const {
  // Some more is saved than figures touch, and the toolkit may paint some more than it is told.
  constexpr int margin = 4;
  return std::any_of(area_.begin(), area_.end(), [&region](const QRect& part) {
    return region.intersects(part.adjusted(-margin, -margin, margin, margin));
  });
}

bool WidgetPane::isChanging() const {
  const QBackingStore* const store = backingStore();
  return store != nullptr && PictureWatch::shared().isChanging(*store);
}

bool WidgetPane::isOutdated() const {
  const QBackingStore* const store = backingStore();
  return store != nullptr &&
         (area_ & host_->rect()).intersects(PictureWatch::shared().outdated(*store));
}

void WidgetPane::draw() {
  QBackingStore* const store = backingStore();
  if (store == nullptr || !PictureWatch::shared().hasPicture(*store) ||
      imageOf(*store) == nullptr || isHidden_ || list_ == nullptr) {
    return;
  }
  const QRegion region = (area_ & host_->rect()) - PictureWatch::shared().outdated(*store);
  const bool isSaved = under_.region() == region && under_.areOf(*imageOf(*store));
  if (!isSaved) {
    putBack();
    under_ = SavedPixels(*imageOf(*store), region);
  }
  if (under_.isEmpty()) {
    isDrawn_ = true;
    return;
  }
  const OwnPainting painting(*store, region);
  QImage* const picture = imageOf(*store);
  // Painting begins with another picture when the window has come to a screen of another scale.
  if (picture == nullptr || !under_.areOf(*picture)) {
    under_ = {};
    return;
  }
  isDrawn_ = true;
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
  const auto picture = [store, &under]() -> QImage* {
    QImage* const image = store == nullptr || under.isEmpty() ? nullptr : imageOf(*store);
    return image != nullptr && under.areOf(*image) ? image : nullptr;
  };
  if (picture() == nullptr) {
    return;
  }
  const OwnPainting painting(*store, under.region());
  // Painting begins with another one when the window has come to a screen of another scale.
  if (QImage* const image = picture()) {
    under.putBack(*image);
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
