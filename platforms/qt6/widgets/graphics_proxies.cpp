#include "platforms/qt6/widgets/graphics_proxies.h"

#include <QGraphicsProxyWidget>
#include <QGraphicsView>
#include <algorithm>
#include <utility>

#include "platforms/qt6/widgets/graphics_press.h"
#include "platforms/qt6/widgets/placed_view.h"
#include "platforms/qt6/widgets/widget_view.h"

namespace tarnix::qt6::graphics_proxies {

namespace {

QTransform toViewOf(const QGraphicsView& view, const QGraphicsItem& item) {
  const QPoint viewport = view.viewport()->pos();
  return item.deviceTransform(view.viewportTransform()) *
         QTransform::fromTranslate(viewport.x(), viewport.y());
}

}  // namespace

std::shared_ptr<platform::View> placedView(std::shared_ptr<platform::View> view,
                                           const QTransform& toScreen,
                                           const Surroundings& surroundings) {
  return std::make_shared<PlacedView>(
      std::move(view), std::make_shared<const Placement>(Placement{toScreen, surroundings}));
}

std::vector<std::shared_ptr<platform::View>> viewsIn(const QGraphicsView& view, QPointF topLeft,
                                                     const Surroundings& surroundings,
                                                     ViewSource& source) {
  std::vector<std::shared_ptr<platform::View>> result;
  if (view.scene() == nullptr || !view.viewport()->isVisible()) {
    return result;
  }
  const QRect viewport = view.viewport()->rect();
  const Surroundings outside =
      surroundings.clippedTo(QRectF(view.viewport()->geometry()).translated(topLeft));
  for (const QGraphicsItem* item : view.items(viewport, Qt::IntersectsItemBoundingRect)) {
    const auto* const proxy = dynamic_cast<const QGraphicsProxyWidget*>(item);
    if (proxy == nullptr || proxy->widget() == nullptr) {
      continue;
    }
    auto inside = std::make_shared<Surroundings>();
    inside->opacity = surroundings.opacity * proxy->effectiveOpacity();
    auto widget = std::make_shared<WidgetView>(*proxy->widget(), QPointF(0, 0), std::move(inside),
                                               nullptr, source);
    const QTransform toScreen =
        toViewOf(view, *proxy) * QTransform::fromTranslate(topLeft.x(), topLeft.y());
    result.push_back(placedView(std::move(widget), toScreen, outside));
  }
  std::reverse(result.begin(), result.end());
  return result;
}

Reached reachedIn(const QGraphicsView& view, QPoint point) {
  const QGraphicsProxyWidget* const proxy = widgetInScene(view, point);
  if (proxy == nullptr || proxy->widget() == nullptr) {
    return {};
  }
  const QTransform toView = toViewOf(view, *proxy);
  return {proxy->widget(), toView.inverted().map(QPointF(point)).toPoint(), toView};
}

}  // namespace tarnix::qt6::graphics_proxies
