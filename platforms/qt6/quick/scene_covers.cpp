#include "platforms/qt6/quick/scene_covers.h"

#include <QColor>
#include <QJSValue>
#include <QQuickItem>
#include <QTransform>
#include <algorithm>

namespace tarnix::qt6 {

namespace {

// A part of the scene's area: what hides others is large, and the grounds of buttons are many.
constexpr double smallestPart = 0.02;
constexpr std::size_t mostCovers = 64;

bool isPlainlyColoured(const QQuickItem& rectangle) {
  const QVariant gradient = rectangle.property("gradient");
  const bool hasGradient = gradient.canConvert<QJSValue>() &&
                           !gradient.value<QJSValue>().isNull() &&
                           !gradient.value<QJSValue>().isUndefined();
  return !hasGradient && rectangle.property("color").value<QColor>().alpha() == 255;
}

}  // namespace

SceneCovers::SceneCovers(QSizeF size)
    : smallestCover_(size.width() * size.height() * smallestPart) {}

void SceneCovers::note(const QQuickItem& item, const ItemClass& itemClass,
                       const Surroundings& inside, int paintOrder) {
  if (itemClass.kind != ItemKind::rectangle || inside.opacity < 1 || covers_.size() >= mostCovers ||
      item.width() * item.height() < smallestCover_ || !isPlainlyColoured(item)) {
    return;
  }
  if (item.itemTransform(nullptr, nullptr).type() > QTransform::TxScale) {
    return;
  }
  // Round corners hide nothing.
  const double inset = item.property("radius").toDouble() * 0.3;
  const QRectF area =
      inside.shownPart(item.mapRectToScene(QRectF(0, 0, item.width(), item.height()))
                           .translated(inside.origin)
                           .adjusted(inset, inset, -inset, -inset));
  if (!area.isEmpty()) {
    covers_.push_back({area.toRect(), paintOrder});
  }
}

QRegion SceneCovers::over(int paintOrder, const QRectF& area) const {
  QRegion result;
  // In paint order, so that those that count are at the end.
  for (auto cover = covers_.rbegin(); cover != covers_.rend() && cover->paintOrder > paintOrder;
       ++cover) {
    if (cover->area.intersects(area.toAlignedRect())) {
      result += cover->area;
    }
  }
  return result;
}

}  // namespace tarnix::qt6
