#include "platforms/qt6/quick/scene_covers.h"

#include <QColor>
#include <QJSValue>
#include <QQuickItem>
#include <QTransform>
#include <algorithm>

#include "platforms/qt6/quick/item_description.h"
#include "platforms/qt6/quick/paint_order.h"

namespace tarnix::qt6 {

namespace {

// A part of the scene's area: what hides others is large, and the grounds of buttons are many.
constexpr double smallestPart = 0.02;
constexpr std::size_t mostCovers = 32;
// Far below what the stack of a thread holds.
constexpr int deepest = 1'000;

bool isPlainlyColoured(const QQuickItem& rectangle) {
  const QVariant colour = rectangle.property("color");
  const QVariant gradient = rectangle.property("gradient");
  const bool hasGradient = gradient.canConvert<QJSValue>() &&
                           !gradient.value<QJSValue>().isNull() &&
                           !gradient.value<QJSValue>().isUndefined();
  return !hasGradient && colour.value<QColor>().alpha() == 255;
}

double sizeOf(const QRect& area) { return double{1} * area.width() * area.height(); }

}  // namespace

SceneCovers::SceneCovers(QQuickItem& root)
    : smallestCover_(root.width() * root.height() * smallestPart) {
  visit(root, {true, QRectF(0, 0, root.width(), root.height())}, 0);
  if (covers_.size() > mostCovers) {
    std::partial_sort(covers_.begin(), covers_.begin() + mostCovers, covers_.end(),
                      [](const Cover& left, const Cover& right) {
                        return sizeOf(left.area) > sizeOf(right.area);
                      });
    covers_.resize(mostCovers);
  }
}

void SceneCovers::visit(QQuickItem& item, const Place& place, int depth) {
  if (!item.isVisible() || depth > deepest) {
    return;
  }
  Place inside = place;
  inside.isOpaque = place.isOpaque && item.opacity() >= 1;
  if (item.clip()) {
    inside.clip &= item.mapRectToScene(QRectF(0, 0, item.width(), item.height()));
  }
  const QList<QQuickItem*> children = inPaintOrder(item);
  auto child = children.begin();
  for (; child != children.end() && (*child)->z() < 0; ++child) {
    visit(**child, inside, depth + 1);
  }
  paintOrder_.insert(&item, static_cast<int>(paintOrder_.size()));
  if (inside.isOpaque) {
    note(item, place);
  }
  for (; child != children.end(); ++child) {
    visit(**child, inside, depth + 1);
  }
}

void SceneCovers::note(const QQuickItem& item, const Place& place) {
  if (item.width() * item.height() < smallestCover_ || classOf(item)->kind != ItemKind::rectangle ||
      !isPlainlyColoured(item)) {
    return;
  }
  const QTransform toScene = item.itemTransform(nullptr, nullptr);
  if (toScene.type() > QTransform::TxScale) {
    return;
  }
  // Round corners hide nothing.
  const double inset = item.property("radius").toDouble() * 0.3;
  const QRectF area = item.mapRectToScene(QRectF(0, 0, item.width(), item.height()))
                          .adjusted(inset, inset, -inset, -inset)
                          .intersected(place.clip);
  if (!area.isEmpty()) {
    covers_.push_back({area.toRect(), paintOrder_.value(&item)});
  }
}

QRegion SceneCovers::over(const QQuickItem& item, const QRectF& area) const {
  QRegion result;
  const QRect pixels = area.toAlignedRect();
  int order = -1;
  for (const Cover& cover : covers_) {
    if (!cover.area.intersects(pixels)) {
      continue;
    }
    if (order < 0) {
      order = paintOrder_.value(&item);
    }
    if (cover.order > order) {
      result += cover.area;
    }
  }
  return result;
}

}  // namespace tarnix::qt6
