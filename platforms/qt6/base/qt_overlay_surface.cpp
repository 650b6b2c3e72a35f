#include "platforms/qt6/base/qt_overlay_surface.h"

#include <QGuiApplication>
#include <QVariant>
#include <algorithm>

#include "platforms/qt6/base/part_loader.h"
#include "platforms/qt6/base/window_order.h"
#include "platforms/qt6/shared/figure_painter.h"

namespace tarnix::qt6 {

namespace {

QPointF globalOrigin(const QWindow& window) { return window.mapToGlobal(QPointF(0, 0)); }

/// Whether the system says where windows stand; else only popups can be placed, by the window that
/// they belong to.
bool knowsPlaces() { return !QGuiApplication::platformName().startsWith(QLatin1String("wayland")); }

bool touches(const platform::DisplayList& list, const QRectF& area) {
  return std::any_of(list.begin(), list.end(), [&area](const platform::Figure& figure) {
    return boundsOf(figure).intersects(area);
  });
}

/// Scenes that have a surface of their own in a window of widgets lie over all that is drawn in it.
void addEmbedded(QList<QWindow*>& windows) {
  const QList<QWindow*> outer = windows;
  for (const QWindow* window : outer) {
    for (QWindow* inner : window->findChildren<QWindow*>()) {
      if (!inner->isTopLevel() && inner->isVisible() && inner->handle() != nullptr &&
          !inner->inherits("QWidgetWindow")) {
        windows.append(inner);
      }
    }
  }
}

}  // namespace

QtOverlaySurface::~QtOverlaySurface() {
  removePanes([](QWindow*) { return true; });
}

std::optional<platform::OverlaySurface::Place> QtOverlaySurface::place() {
  QWindow* const front = qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr
                             ? nullptr
                             : WindowOrder::shared().keyWindow();
  if (front == nullptr) {
    return std::nullopt;
  }
  Place result;
  result.size = {static_cast<double>(front->width()), static_cast<double>(front->height())};
  const QPointF origin = globalOrigin(*front);
  // A window that is moved takes along what is drawn over it.
  if (hasOrigin_ && front_ != front) {
    const QPointF moved = origin_ - origin;
    result.movedBy = {moved.x(), moved.y()};
  }
  front_ = front;
  origin_ = origin;
  hasOrigin_ = true;
  return result;
}

void QtOverlaySurface::show(const platform::DisplayList& list) {
  if (front_ == nullptr) {
    return;
  }
  const auto shared = std::make_shared<const platform::DisplayList>(list);
  QList<QWindow*> windows = knowsPlaces() ? WindowOrder::windows() : QList<QWindow*>{front_};
  windows += WindowOrder::popups();
  addEmbedded(windows);
  removePanes([&windows](QWindow* window) { return !windows.contains(window); });
  for (QWindow* window : std::as_const(windows)) {
    const QPointF origin = origin_ - globalOrigin(*window);
    if (!touches(list, QRectF(-origin, window->size()))) {
      removePanes([window](const QWindow* each) { return each == window; });
    } else if (OverlayPane* const pane = paneOver(*window)) {
      pane->show(shared, origin);
    }
  }
}

OverlayPane* QtOverlaySurface::paneOver(QWindow& window) {
  const auto placed = std::find_if(panes_.begin(), panes_.end(), [&window](const PlacedPane& each) {
    return each.window == &window;
  });
  if (placed != panes_.end()) {
    return placed->pane.get();
  }
  std::unique_ptr<OverlayPane> pane = PartLoader::shared().makeOverlayPane(window);
  if (pane == nullptr) {
    return nullptr;
  }
  window.setProperty(overlayPaneProperty, QVariant::fromValue<void*>(pane.get()));
  return panes_.emplace_back(PlacedPane{&window, std::move(pane)}).pane.get();
}

void QtOverlaySurface::removePanes(const std::function<bool(QWindow*)>& isToGo) {
  std::erase_if(panes_, [&isToGo](const PlacedPane& placed) {
    if (placed.window == nullptr) {
      return true;
    }
    if (!isToGo(placed.window)) {
      return false;
    }
    // A window that is hidden may be shown again.
    placed.window->setProperty(overlayPaneProperty, QVariant());
    return true;
  });
}

}  // namespace tarnix::qt6
