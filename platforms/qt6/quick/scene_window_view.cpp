#include "platforms/qt6/quick/scene_window_view.h"

#include "platforms/qt6/quick/scene_item_view.h"
#include "platforms/qt6/shared/class_name.h"
#include "platforms/qt6/shared/frame.h"

namespace tarnix::qt6 {

SceneWindowView::SceneWindowView(QQuickWindow& window, const Surroundings& surroundings)
    : window_(&window), surroundings_(std::make_shared<const Surroundings>(surroundings)) {}

std::string SceneWindowView::className() const {
  return window_ == nullptr ? std::string() : writtenClassName(*window_->metaObject());
}

platform::Rect SceneWindowView::accessibilityFrame() const {
  return window_ == nullptr ? platform::Rect()
                            : frameOf(QRectF(surroundings_->origin, window_->size()));
}

std::vector<std::shared_ptr<platform::View>> SceneWindowView::subviews() const {
  if (window_ == nullptr || window_->contentItem() == nullptr) {
    return {};
  }
  QQuickItem& root = *window_->contentItem();
  return {std::make_shared<SceneItemView>(root, nullptr, surroundings_,
                                          std::make_shared<const SceneCovers>(root))};
}

}  // namespace tarnix::qt6
