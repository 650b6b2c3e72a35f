#pragma once

#include <QPoint>
#include <QTransform>
#include <memory>
#include <vector>

#include "platforms/qt6/shared/surroundings.h"
#include "platforms/qt6/shared/user_interface_part.h"
#include "probe/platform/view.h"

class QGraphicsView;
class QWidget;

/// Widgets that stand as figures in the scene of a view, wherever and however turned. Main thread.
namespace tarnix::qt6::graphics_proxies {

/// Back to front. `topLeft` is where the view stands on the screen.
std::vector<std::shared_ptr<platform::View>> viewsIn(const QGraphicsView& view, QPointF topLeft,
                                                     const Surroundings& surroundings,
                                                     ViewSource& source);

/// The outermost widget that a press at a point of a view, in its own coordinates, reaches in its
/// scene, and where in it; null when it reaches something else.
struct Reached {
  QWidget* widget = nullptr;
  QPoint point;
  /// From the widget to the view.
  QTransform toView;
};
Reached reachedIn(const QGraphicsView& view, QPoint point);

/// The view of a widget in a scene as it shows on the screen: `toScreen` maps from that widget's
/// window.
std::shared_ptr<platform::View> placedView(std::shared_ptr<platform::View> view,
                                           const QTransform& toScreen,
                                           const Surroundings& surroundings);

}  // namespace tarnix::qt6::graphics_proxies
