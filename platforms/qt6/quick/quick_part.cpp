#include "platforms/qt6/quick/quick_part.h"

#include <QQuickWindow>

#include "platforms/qt6/quick/scene_image.h"
#include "platforms/qt6/quick/scene_screens.h"
#include "platforms/qt6/quick/scene_window_view.h"

namespace tarnix::qt6 {

QuickPart& QuickPart::shared() {
  static QuickPart& instance = *new QuickPart;
  return instance;
}

std::shared_ptr<platform::View> QuickPart::viewOf(QWindow& window,
                                                  const Surroundings& surroundings) {
  auto* const scene = qobject_cast<QQuickWindow*>(&window);
  return scene == nullptr ? nullptr : std::make_shared<SceneWindowView>(*scene, surroundings);
}

ScreenFinder& QuickPart::screens() { return SceneScreens::shared(); }

QImage QuickPart::lastImage(QWindow& window) {
  auto* const scene = qobject_cast<QQuickWindow*>(&window);
  return scene == nullptr ? QImage() : lastImageOf(*scene);
}

}  // namespace tarnix::qt6
