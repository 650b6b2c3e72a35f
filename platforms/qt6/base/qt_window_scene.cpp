#include "platforms/qt6/base/qt_window_scene.h"

#include <QGuiApplication>
#include <QWindow>
#include <utility>

#include "platforms/qt6/base/contentless_view.h"
#include "platforms/qt6/base/part_loader.h"
#include "platforms/qt6/base/qt_window.h"
#include "platforms/qt6/base/window_order.h"

namespace tarnix::qt6 {

namespace {

QPointF globalOrigin(const QWindow& window) { return window.mapToGlobal(QPointF(0, 0)); }

std::shared_ptr<platform::View> contentOf(QWindow& window, const QWindow& keyWindow) {
  Surroundings surroundings;
  surroundings.origin = globalOrigin(window) - globalOrigin(keyWindow);
  surroundings.clip = QRectF(surroundings.origin, window.size());
  if (std::shared_ptr<platform::View> view = PartLoader::shared().viewOf(window, surroundings)) {
    return view;
  }
  return std::make_shared<ContentlessView>(window, surroundings.origin);
}

}  // namespace

std::vector<std::shared_ptr<platform::Window>> QtWindowScene::windows() const {
  std::vector<std::shared_ptr<platform::Window>> result;
  if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) {
    return result;
  }
  PartLoader::shared().update();
  const QWindow* const keyWindow = WindowOrder::shared().keyWindow();
  for (QWindow* window : WindowOrder::windows()) {
    const bool isKey = window == keyWindow;
    std::vector<std::shared_ptr<platform::View>> popups;
    if (isKey) {
      for (QWindow* popup : WindowOrder::popups()) {
        popups.push_back(contentOf(*popup, *keyWindow));
      }
    }
    // There is a key window wherever there is a window.
    result.push_back(
        std::make_shared<QtWindow>(contentOf(*window, *keyWindow), std::move(popups), isKey));
  }
  return result;
}

}  // namespace tarnix::qt6
