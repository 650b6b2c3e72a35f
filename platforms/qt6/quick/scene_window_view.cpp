#include "platforms/qt6/quick/scene_window_view.h"

#include "platforms/qt6/quick/scene.h"
#include "platforms/qt6/shared/author_name.h"
#include "platforms/qt6/shared/class_name.h"
#include "platforms/qt6/shared/frame.h"

namespace tarnix::qt6 {

SceneWindowView::SceneWindowView(QQuickWindow& window, const Surroundings& surroundings)
    : window_(&window), surroundings_(std::make_shared<const Surroundings>(surroundings)) {}

std::string SceneWindowView::className() const {
  return window_ == nullptr ? std::string() : writtenClassName(*window_->metaObject());
}

bool SceneWindowView::isHidden() const {
  // A scene inside a widget has a window without a surface, shown or not: the widget decides.
  return window_ == nullptr || (window_->handle() != nullptr && !window_->isVisible());
}

std::optional<std::string> SceneWindowView::accessibilityIdentifier() const {
  return window_ == nullptr ? std::nullopt : authorsName(*window_);
}

platform::Rect SceneWindowView::accessibilityFrame() const {
  return window_ == nullptr ? platform::Rect()
                            : frameOf(QRectF(surroundings_->origin, window_->size()));
}

std::vector<std::shared_ptr<platform::View>> SceneWindowView::subviews() const {
  if (window_ == nullptr || window_->contentItem() == nullptr) {
    return {};
  }
  return {Scene::rootView(*window_->contentItem(), window_->size(), *surroundings_)};
}

}  // namespace tarnix::qt6
