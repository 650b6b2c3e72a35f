#include "platforms/qt6/quick/quick_part.h"

#include <QQuickWindow>

#include "platforms/qt6/quick/quick_pane.h"
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

std::unique_ptr<OverlayPane> QuickPart::makeOverlayPane(QWindow& window) {
  auto* const scene = qobject_cast<QQuickWindow*>(&window);
  return scene == nullptr || scene->contentItem() == nullptr ? nullptr
                                                             : std::make_unique<QuickPane>(*scene);
}

}  // namespace tarnix::qt6
