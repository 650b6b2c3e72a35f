#include "platforms/qt6/widgets/graphics_press.h"

#include <QGraphicsItem>
#include <QGraphicsProxyWidget>
#include <QGraphicsTextItem>
#include <QGraphicsView>
#include <algorithm>
#include <array>
#include <string_view>
#include <typeinfo>

#include "platforms/qt6/widgets/press_reaction.h"

namespace tarnix::qt6 {

namespace {

/// The toolkit's own figures, as the compiler writes their classes. They do nothing with a press
/// unless they can be selected or moved.
constexpr std::array<std::string_view, 8> plainFigures = {
    "17QGraphicsRectItem",       "20QGraphicsEllipseItem", "20QGraphicsPolygonItem",
    "17QGraphicsPathItem",       "17QGraphicsLineItem",    "19QGraphicsPixmapItem",
    "23QGraphicsSimpleTextItem", "18QGraphicsItemGroup"};

bool isPlainFigure(const QGraphicsItem& item) {
  const std::string_view name = typeid(item).name();
  return std::find(plainFigures.begin(), plainFigures.end(), name) != plainFigures.end();
}

bool reactsInside(const QGraphicsProxyWidget& proxy, QPointF point) {
  const QWidget* const outermost = proxy.widget();
  if (outermost == nullptr) {
    return false;
  }
  const QPoint place = point.toPoint();
  const QWidget* widget = outermost->childAt(place);
  for (widget = widget == nullptr ? outermost : widget; widget != nullptr;
       widget = widget == outermost ? nullptr : widget->parentWidget()) {
    switch (reactionOf(*widget, classOf(*widget).kind, widget->mapFrom(outermost, place))) {
      case PressReaction::reacts:
        return true;
      case PressReaction::keeps:
        return false;
      case PressReaction::passesOn:
        break;
    }
  }
  return false;
}

bool reacts(const QGraphicsItem& item, QPointF scenePoint) {
  if (item.flags() & (QGraphicsItem::ItemIsSelectable | QGraphicsItem::ItemIsMovable)) {
    return true;
  }
  if (const auto* const proxy = qgraphicsitem_cast<const QGraphicsProxyWidget*>(&item)) {
    return reactsInside(*proxy, proxy->mapFromScene(scenePoint));
  }
  if (const auto* const text = qgraphicsitem_cast<const QGraphicsTextItem*>(&item)) {
    return text->textInteractionFlags() != Qt::NoTextInteraction;
  }
  return !isPlainFigure(item);
}

}  // namespace

bool reactsInScene(const QGraphicsView& view, QPoint point) {
  if (!view.isInteractive()) {
    return false;
  }
  const QPoint inViewport = view.viewport()->mapFrom(&view, point);
  const QPointF scenePoint = view.mapToScene(inViewport);
  // Front to back, as the scene hands a press on.
  for (const QGraphicsItem* item : view.items(inViewport)) {
    if (!item->acceptedMouseButtons().testFlag(Qt::LeftButton)) {
      continue;
    }
    if (!item->isEnabled()) {
      return false;
    }
    if (reacts(*item, scenePoint)) {
      return true;
    }
  }
  return false;
}

}  // namespace tarnix::qt6
