#include "platforms/qt6/base/qt_overlay_surfaces.h"

#include <QGuiApplication>

#include "platforms/qt6/base/qt_overlay_surface.h"
#include "platforms/qt6/base/window_order.h"
#include "platforms/qt6/shared/figure_painter.h"

namespace tarnix::qt6 {

namespace {

bool canDraw() { return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr; }

}  // namespace

QtOverlaySurfaces& QtOverlaySurfaces::shared() {
  static QtOverlaySurfaces& instance = *new QtOverlaySurfaces;
  return instance;
}

std::unique_ptr<platform::OverlaySurface> QtOverlaySurfaces::makeSurface(platform::WindowScene&) {
  // The application has one scene.
  if (!canDraw() || WindowOrder::shared().keyWindow() == nullptr) {
    return nullptr;
  }
  return std::make_unique<QtOverlaySurface>();
}

platform::Size QtOverlaySurfaces::sizeOf(std::string_view text, const platform::Font& font) {
  return canDraw() ? sizeOfText(text, font) : platform::Size();
}

}  // namespace tarnix::qt6
