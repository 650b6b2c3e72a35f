#include "platforms/qt6/quick/quick_part.h"

#include <QQuickWindow>
#include <utility>

#include "platforms/qt6/quick/item_touch.h"
#include "platforms/qt6/quick/quick_pane.h"
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

std::shared_ptr<platform::View> QuickPart::touchedView(QWindow& window,
                                                       const Surroundings& surroundings,
                                                       QPointF point,
                                                       std::shared_ptr<platform::View> outer) {
  auto* const scene = qobject_cast<QQuickWindow*>(&window);
  return scene == nullptr ? nullptr : touchedItem(*scene, surroundings, point, std::move(outer));
}

std::unique_ptr<OverlayPane> QuickPart::makeOverlayPane(QWindow& window) {
  auto* const scene = qobject_cast<QQuickWindow*>(&window);
  return scene == nullptr || scene->contentItem() == nullptr ? nullptr
                                                             : std::make_unique<QuickPane>(*scene);
}

}  // namespace tarnix::qt6
