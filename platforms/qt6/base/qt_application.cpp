#include "platforms/qt6/base/qt_application.h"

#include <QCoreApplication>

#include "platforms/qt6/base/qt_window_scene.h"

namespace tarnix::qt6 {

QtApplication& QtApplication::shared() {
  static QtApplication& instance = *new QtApplication;
  return instance;
}

std::vector<std::shared_ptr<platform::WindowScene>> QtApplication::connectedScenes() const {
  if (QCoreApplication::instance() == nullptr) {
    return {};
  }
  return {std::make_shared<QtWindowScene>()};
}

}  // namespace tarnix::qt6
