#pragma once

#include <QBackingStore>
#include <QColor>
#include <QCoreApplication>
#include <QImage>
#include <QWidget>
#include <QWindow>
#include <memory>
#include <optional>

#include "tests/contract/qt6_host_world.h"

/// What the tests of the overlay on Qt share.
namespace tarnix::contract {

/// A red square of 50 with its upper left corner there.
inline platform::DisplayList squareAt(platform::Point origin) {
  return {{{.shape =
                platform::RoundedRectangle{
                    .frame = {{0, 0}, {50, 50}}, .cornerRadius = 4, .fill = {1, 0, 0, 1}},
            .transform = {1, origin}}}};
}

/// A surface over the windows of this process, for as long as it lives.
class Overlay {
 public:
  Overlay() : surface_(qt6Services().overlaySurfaces->makeSurface(scene())) {}

  void show(const platform::DisplayList& list) {
    place = surface_->place();
    surface_->show(list);
  }

  std::optional<platform::OverlaySurface::Place> place;

 private:
  platform::WindowScene& scene() {
    scene_ = qt6Services().application->connectedScenes().at(0);
    return *scene_;
  }

  std::shared_ptr<platform::WindowScene> scene_;
  std::unique_ptr<platform::OverlaySurface> surface_;
};

inline bool isRed(const QImage& picture, QPoint at) {
  const QColor color = picture.pixelColor(at);
  return color.red() > 240 && color.green() < 15 && color.blue() < 15;
}

/// What a person sees of a window of widgets.
inline QImage seen(const QWidget& window) {
  QCoreApplication::processEvents();
  return static_cast<const QImage*>(window.backingStore()->paintDevice())->copy(window.rect());
}

/// In front, and drawn.
template <class Widget>
std::unique_ptr<Widget> shown(std::unique_ptr<Widget> widget) {
  widget->show();
  widget->activateWindow();
  pumpUntil([&] { return widget->isActiveWindow() && widget->windowHandle()->isExposed(); });
  return widget;
}

}  // namespace tarnix::contract
