#include "platforms/qt6/widgets/widget_touch.h"

#include <QGraphicsView>
#include <QTransform>
#include <QWidget>
#include <QWindow>
#include <vector>

#include "platforms/qt6/shared/touched_view.h"
#include "platforms/qt6/widgets/embedded_scene.h"
#include "platforms/qt6/widgets/graphics_proxies.h"
#include "platforms/qt6/widgets/press_reaction.h"
#include "platforms/qt6/widgets/widget_class.h"
#include "platforms/qt6/widgets/widget_responder.h"
#include "platforms/qt6/widgets/widget_view.h"

namespace tarnix::qt6 {

namespace {

QWidget* widgetAt(QWidget& window, QPoint point) {
  if (QWidget* const child = window.childAt(point)) {
    return child;
  }
  const QRegion mask = window.mask();
  const bool isInside = mask.isEmpty() ? window.rect().contains(point) : mask.contains(point);
  return isInside ? &window : nullptr;
}

/// From the window to `widget`.
std::vector<QWidget*> pathTo(QWidget& widget, const QWidget& window) {
  std::vector<QWidget*> path;
  for (QWidget* step = &widget; step != nullptr; step = step->parentWidget()) {
    path.insert(path.begin(), step);
    if (step == &window) {
      break;
    }
  }
  return path;
}

/// What a touch has reached of the widgets in the scene of `view`, which is where it was reached on
/// the screen itself; `outer` when it reaches none. `point` is given in `view`.
std::shared_ptr<platform::View> touchedInScene(QGraphicsView& view, QPointF topLeft,
                                               const Surroundings& surroundings, QPoint point,
                                               std::shared_ptr<platform::View> outer,
                                               ViewSource& source) {
  const graphics_proxies::Reached reached = graphics_proxies::reachedIn(view, point);
  if (reached.widget == nullptr) {
    return outer;
  }
  QWidget& window = *reached.widget;
  QWidget* const touched = widgetAt(window, reached.point);
  if (touched == nullptr) {
    return outer;
  }
  const QTransform toScreen = reached.toView * QTransform::fromTranslate(topLeft.x(), topLeft.y());
  const std::vector<QWidget*> path = pathTo(*touched, window);
  const QWidget* const reacting = reactingTo(*touched, window, reached.point);
  auto step = std::make_shared<WidgetView>(window, QPointF(0, 0),
                                           std::make_shared<const Surroundings>(), nullptr, source);
  std::shared_ptr<platform::View> result = std::move(outer);
  for (QWidget* widget : path) {
    if (widget != &window) {
      step = step->viewOfChild(*widget);
    }
    if (step == nullptr) {
      break;
    }
    result = std::make_shared<TouchedView>(
        graphics_proxies::placedView(step, toScreen, surroundings), result,
        std::make_shared<WidgetResponder>(*widget, classOf(*widget).kind,
                                          widget->mapFrom(&window, reached.point),
                                          widget == reacting, view, point));
  }
  return result;
}

}  // namespace

std::shared_ptr<platform::View> touchedView(QWidget& window, const Surroundings& surroundings,
                                            QPointF point, ViewSource& source) {
  const QPoint inWindow = (point - surroundings.origin).toPoint();
  QWidget* const touched = widgetAt(window, inWindow);
  if (touched == nullptr) {
    return nullptr;
  }
  const std::vector<QWidget*> path = pathTo(*touched, window);
  const QWidget* const reacting = reactingTo(*touched, window, inWindow);
  std::shared_ptr<WidgetView> step = std::make_shared<WidgetView>(
      window, surroundings.origin, std::make_shared<const Surroundings>(surroundings), nullptr,
      source);
  std::shared_ptr<platform::View> result;
  for (QWidget* widget : path) {
    if (widget != &window) {
      step = step->viewOfChild(*widget);
    }
    if (step == nullptr) {
      return result;
    }
    const WidgetKind kind = classOf(*widget).kind;
    result = std::make_shared<TouchedView>(
        step, result,
        std::make_shared<WidgetResponder>(*widget, kind, widget->mapFrom(&window, inWindow),
                                          widget == reacting));
  }
  for (QWidget* widget : path) {
    if (auto* const view = qobject_cast<QGraphicsView*>(widget);
        view != nullptr && view != touched) {
      const QPoint topLeft = view->mapTo(&window, QPoint(0, 0));
      return touchedInScene(*view, surroundings.origin + topLeft, surroundings, inWindow - topLeft,
                            result, source);
    }
  }
  if (QWindow* const embedded = embeddedWindow(*touched, classOf(*touched).kind)) {
    Surroundings inside = surroundings;
    inside.origin += touched->mapTo(&window, QPointF(0, 0));
    if (auto view = source.touchedView(*embedded, inside, point, result)) {
      return view;
    }
  }
  return result;
}

}  // namespace tarnix::qt6
