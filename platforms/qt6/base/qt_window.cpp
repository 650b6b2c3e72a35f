#include "platforms/qt6/base/qt_window.h"

#include <utility>

namespace tarnix::qt6 {

QtWindow::QtWindow(std::shared_ptr<platform::View> content,
                   std::vector<std::shared_ptr<platform::View>> popups, bool isKeyWindow,
                   Touched touched)
    : content_(std::move(content)),
      popups_(std::move(popups)),
      isKeyWindow_(isKeyWindow),
      touched_(std::move(touched)) {}

std::vector<std::shared_ptr<platform::View>> QtWindow::subviews() const {
  std::vector<std::shared_ptr<platform::View>> result = content_->subviews();
  result.insert(result.end(), popups_.begin(), popups_.end());
  return result;
}

}  // namespace tarnix::qt6
