#include "platforms/qt6/quick/overlay_item.h"

#include <QImage>
#include <QPainter>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRectangleNode>
#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "platforms/qt6/shared/figure_painter.h"

namespace tarnix::qt6 {

namespace {

// Above the toolkit's own overlay of popups and whatever applications have been seen to use.
constexpr double inFrontOfAll = 1e9;

/// Few, and none most of the time.
std::vector<const OverlayItem*>& living() {
  static std::vector<const OverlayItem*>& instance = *new std::vector<const OverlayItem*>;
  return instance;
}

/// What needs no picture; null for everything else.
const platform::RoundedRectangle* plainRectangle(const platform::Figure& figure) {
  const auto* const rectangle = figure.size() == 1 && !figure.front().clip
                                    ? std::get_if<platform::RoundedRectangle>(&figure.front().shape)
                                    : nullptr;
  return rectangle != nullptr && rectangle->cornerRadius == 0 && rectangle->borderWidth == 0 &&
                 !rectangle->shadow
             ? rectangle
             : nullptr;
}

}  // namespace

OverlayItem::OverlayItem(QQuickWindow& window) {
  // Without a parent that owns it: it is no object in the host's tree of objects.
  QQmlEngine::setObjectOwnership(this, QQmlEngine::CppOwnership);
  setFlag(ItemHasContents);
  setAcceptedMouseButtons(Qt::NoButton);
  setZ(inFrontOfAll);
  living().push_back(this);
  // Where a child of the host's begins, so that the rectangle around them all stays what it is.
  const QList<QQuickItem*> children = window.contentItem()->childItems();
  if (!children.isEmpty()) {
    setPosition(children.first()->position());
  }
  setParentItem(window.contentItem());
}

OverlayItem::~OverlayItem() {
  setParentItem(nullptr);
  std::erase(living(), this);
}

void OverlayItem::removeFrom(QList<QQuickItem*>& items) {
  if (!living().empty()) {
    items.removeIf([](const QQuickItem* item) {
      return std::find(living().begin(), living().end(), item) != living().end();
    });
  }
}

void OverlayItem::show(std::shared_ptr<const platform::DisplayList> list, QPointF origin) {
  list_ = std::move(list);
  origin_ = origin;
  update();
}

void OverlayItem::setHiddenForPicture(bool isHidden) {
  isHiddenForPicture_ = isHidden;
  update();
}

QSGNode* OverlayItem::updatePaintNode(QSGNode* node, UpdatePaintNodeData*) {
  delete node;
  if (list_ == nullptr || isHiddenForPicture_) {
    return nullptr;
  }
  auto* const root = new QSGNode;
  for (const platform::Figure& figure : *list_) {
    if (QSGNode* const child = makeNode(figure)) {
      child->setFlag(QSGNode::OwnedByParent);
      root->appendChildNode(child);
    }
  }
  return root;
}

QSGNode* OverlayItem::makeNode(const platform::Figure& figure) const {
  const QRectF bounds = boundsOf(figure).translated(origin_);
  if (const platform::RoundedRectangle* const rectangle = plainRectangle(figure)) {
    QSGRectangleNode* const node = window()->createRectangleNode();
    node->setRect(bounds.translated(-position()));
    const platform::Color& fill = rectangle->fill;
    node->setColor(QColor::fromRgbF(static_cast<float>(fill.red), static_cast<float>(fill.green),
                                    static_cast<float>(fill.blue),
                                    static_cast<float>(fill.alpha * figure.front().opacity)));
    return node;
  }
  const double ratio = window()->effectiveDevicePixelRatio();
  const QRect seen = QRectF(QPointF(bounds.x() * ratio, bounds.y() * ratio), bounds.size() * ratio)
                         .toAlignedRect()
                         .adjusted(-1, -1, 1, 1) &
                     QRect(QPoint(0, 0), (QSizeF(window()->size()) * ratio).toSize());
  if (seen.isEmpty()) {
    return nullptr;
  }
  QImage image(seen.size(), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  {
    QPainter painter(&image);
    painter.translate(-seen.topLeft());
    painter.scale(ratio, ratio);
    painter.translate(origin_);
    paintFigure(painter, figure);
  }
  QSGImageNode* const node = window()->createImageNode();
  node->setTexture(window()->createTextureFromImage(image, QQuickWindow::TextureHasAlphaChannel));
  node->setOwnsTexture(true);
  node->setRect(QRectF(QPointF(seen.topLeft()) / ratio - position(), QSizeF(seen.size()) / ratio));
  return node;
}

}  // namespace tarnix::qt6
