#include "platforms/qt6/quick/scene_screens.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <cstring>

#include "platforms/qt6/quick/hosted_view.h"
#include "platforms/qt6/quick/paint_order.h"
#include "platforms/qt6/quick/scene_page_search.h"
#include "platforms/qt6/shared/class_name.h"
#include "platforms/qt6/shared/class_origin.h"
#include "platforms/qt6/shared/plain_controller.h"

namespace tarnix::qt6 {

namespace {

constexpr const char* overlayClass = "QQuickOverlay";
constexpr const char* popupItemClass = "QQuickPopupItem";

/// Menus, tips and the lists of combo boxes are no screens.
bool isScreen(const QObject& popup) {
  const QMetaObject* const metaObject = popup.metaObject();
  return isDerivedFrom(metaObject, "QQuickDialog") || isDerivedFrom(metaObject, "QQuickDrawer") ||
         (popup.property("modal").toBool() && !isDerivedFrom(metaObject, "QQuickMenu"));
}

const QQuickItem* overlayOf(const QQuickItem& content) {
  const QList<QQuickItem*> items = content.childItems();
  for (auto item = items.rbegin(); item != items.rend(); ++item) {
    if (std::strcmp((*item)->metaObject()->className(), overlayClass) == 0) {
      return *item;
    }
  }
  return nullptr;
}

void addPopups(const QQuickItem& overlay, ScenePageSearch& search) {
  const QList<QQuickItem*> items = inPaintOrder(overlay);
  for (auto item = items.rbegin(); item != items.rend(); ++item) {
    QObject* const popup = (*item)->parent();
    if (!(*item)->isVisible() || popup == nullptr ||
        !isDerivedFrom((*item)->metaObject(), popupItemClass) || !isScreen(*popup)) {
      continue;
    }
    search.addCertain(*popup);
    search.addPagesIn(**item, (*item)->mapRectToScene(QRectF(QPointF(0, 0), (*item)->size())));
    return;
  }
}

}  // namespace

SceneScreens& SceneScreens::shared() {
  static SceneScreens& instance = *new SceneScreens;
  return instance;
}

bool SceneScreens::addScreens(QWindow& window, ScreenChain& chain) {
  auto* const scene = qobject_cast<QQuickWindow*>(&window);
  if (scene == nullptr) {
    return false;
  }
  ScenePageSearch search(*this, chain);
  const bool isDeclared = hosted_view::isDeclared(window);
  if (isDeclared) {
    search.addCertain(window);
  } else if (window.handle() != nullptr) {
    chain.push_back({&window, this, {}, true, isToolkitClass(window)});
  }
  const QQuickItem* const content = scene->contentItem();
  if (content == nullptr) {
    return true;
  }
  if (!isDeclared) {
    search.takeOutermostForPage();
  }
  search.addPagesIn(*content, QRectF(QPointF(0, 0), scene->size()));
  if (const QQuickItem* const overlay = overlayOf(*content); overlay != nullptr) {
    addPopups(*overlay, search);
  }
  return true;
}

std::unique_ptr<platform::ViewController> SceneScreens::controllerOf(QObject& object) {
  if (!hosted_view::isDeclared(object)) {
    return std::make_unique<PlainController>(object);
  }
  return hosted_view::controllerOf(object);
}

}  // namespace tarnix::qt6
