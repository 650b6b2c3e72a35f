#include "platforms/qt6/widgets/graphics_press.h"

#include <QGraphicsItem>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsTextItem>
#include <QGraphicsView>

#include "platforms/qt6/widgets/own_handlers.h"
#include "platforms/qt6/widgets/press_reaction.h"

namespace tarnix::qt6 {

namespace {

bool reactsInside(const QGraphicsProxyWidget& proxy, QPointF point) {
  const QWidget* const outermost = proxy.widget();
  if (outermost == nullptr) {
    return false;
  }
  const QPoint place = point.toPoint();
  const QWidget* const inner = outermost->childAt(place);
  return reactingTo(inner == nullptr ? *outermost : *inner, *outermost, place) != nullptr;
}

bool reacts(const QGraphicsItem& item, QPointF scenePoint) {
  if (const auto* const proxy = dynamic_cast<const QGraphicsProxyWidget*>(&item)) {
    return reactsInside(*proxy, proxy->mapFromScene(scenePoint));
  }
  return reactsToPress(item);
}

/// Asks what a press at `point` arrives at, front to back, as the scene hands it on, until `visit`
/// says that it has gone far enough.
template <typename Visit>
void forEachReached(const QGraphicsView& view, QPoint point, Visit visit) {
  if (!view.isInteractive()) {
    return;
  }
  const QPoint inViewport = view.viewport()->mapFrom(&view, point);
  const QPointF scenePoint = view.mapToScene(inViewport);
  for (const QGraphicsItem* item : view.items(inViewport)) {
    if (item->acceptedMouseButtons().testFlag(Qt::LeftButton) &&
        (!item->isEnabled() || visit(*item, scenePoint))) {
      return;
    }
  }
}

}  // namespace

bool reactsToPress(const QGraphicsItem& figure) {
  if (!figure.isEnabled() || !figure.acceptedMouseButtons().testFlag(Qt::LeftButton) ||
      dynamic_cast<const QGraphicsProxyWidget*>(&figure) != nullptr) {
    return false;
  }
  if (figure.flags() & (QGraphicsItem::ItemIsSelectable | QGraphicsItem::ItemIsMovable)) {
    return true;
  }
  const auto* const text = dynamic_cast<const QGraphicsTextItem*>(&figure);
  return (text != nullptr && text->textInteractionFlags() != Qt::NoTextInteraction) ||
         hasOwnPressHandler(figure);
}

const QGraphicsProxyWidget* widgetInScene(const QGraphicsView& view, QPoint point) {
  const QGraphicsProxyWidget* result = nullptr;
  forEachReached(view, point, [&](const QGraphicsItem& item, QPointF) {
    result = dynamic_cast<const QGraphicsProxyWidget*>(&item);
    return result != nullptr || reactsToPress(item);
  });
  return result;
}

bool reactsInScene(const QGraphicsView& view, QPoint point) {
  bool result = false;
  forEachReached(view, point, [&](const QGraphicsItem& item, QPointF scenePoint) {
    return result = reacts(item, scenePoint);
  });
  return result ||
         (view.isInteractive() && view.scene() != nullptr && hasOwnPressHandler(*view.scene()));
}

QWidget* typedIntoInScene(QGraphicsView& view) {
  if (!view.isInteractive() || view.scene() == nullptr) {
    return nullptr;
  }
  const auto focusedIn = [](const QGraphicsItem* figure) -> QWidget* {
    const auto* const proxy = dynamic_cast<const QGraphicsProxyWidget*>(figure);
    return proxy == nullptr || proxy->widget() == nullptr ? nullptr
                                                          : proxy->widget()->focusWidget();
  };
  if (const QGraphicsItem* const focused = view.scene()->focusItem()) {
    QWidget* const widget = focusedIn(focused);
    return widget == nullptr ? &view : widget;
  }
  for (const QGraphicsItem* figure : view.items()) {
    if (figure->focusItem() == figure) {
      return focusedIn(figure);
    }
  }
  return nullptr;
}

bool takesKeysInScene(const QGraphicsView& view) {
  if (!view.isInteractive() || view.scene() == nullptr) {
    return false;
  }
  const QGraphicsItem* const focused = view.scene()->focusItem();
  return hasOwnKeyHandler(*view.scene()) || (focused != nullptr && hasOwnKeyHandler(*focused));
}

}  // namespace tarnix::qt6
