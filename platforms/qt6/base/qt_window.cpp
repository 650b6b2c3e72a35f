#include "platforms/qt6/base/qt_window.h"

#include <utility>

#include "platforms/qt6/base/window_order.h"
#include "platforms/qt6/base/window_picture.h"

namespace tarnix::qt6 {

QtWindow::QtWindow(QWindow& window, std::shared_ptr<platform::View> content,
                   std::vector<std::shared_ptr<platform::View>> popups, bool isKeyWindow,
                   Touched touched)
    : window_(&window),
      content_(std::move(content)),
      popups_(std::move(popups)),
      isKeyWindow_(isKeyWindow),
      touched_(std::move(touched)) {}

std::vector<std::shared_ptr<platform::View>> QtWindow::subviews() const {
  std::vector<std::shared_ptr<platform::View>> result = content_->subviews();
  result.insert(result.end(), popups_.begin(), popups_.end());
  return result;
}

std::optional<platform::Picture> QtWindow::lastPicture() const {
  if (window_ == nullptr) {
    return std::nullopt;
  }
  return pictureOf(*window_, isKeyWindow_ ? WindowOrder::popups() : QList<QWindow*>());
}

}  // namespace tarnix::qt6
