#include "platforms/qt6/quick/item_keys.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickRenderControl>
#include <QQuickWindow>
#include <cstring>

namespace tarnix::qt6 {

namespace {

bool hasKeyHandler(const QQuickItem& item) {
  for (const QObject* child : item.children()) {
    if (std::strcmp(child->metaObject()->className(), "QQuickKeysAttached") == 0) {
      return child->property("enabled").toBool();
    }
  }
  // An application's own class that can have the focus wants it for the keys.
  const QMetaObject* metaObject = item.metaObject();
  while (metaObject->superClass() != nullptr &&
         std::strstr(metaObject->className(), "_QML") != nullptr) {
    metaObject = metaObject->superClass();
  }
  return std::strncmp(metaObject->className(), "QQuick", 6) != 0 && item.activeFocusOnTab();
}

/// Whether the focus has gone no further than what all of a window's items stand in.
bool holdsScene(const QQuickItem& item, const QQuickWindow& window) {
  return &item == window.contentItem() ||
         std::strcmp(item.metaObject()->className(), "QQuickContentItem") == 0;
}

/// Whether keys that go to the window around `scene` reach it. One inside another window keeps the
/// item that had the focus while the focus is elsewhere.
bool isReachedByKeys(QQuickWindow& scene) {
  const QWindow* const shown = QQuickRenderControl::renderWindowFor(&scene);
  if (shown != nullptr && shown != &scene) {
    const QObject* const focus = shown->focusObject();
    const auto* const item = qobject_cast<const QQuickItem*>(focus);
    return focus == &scene || (item != nullptr && item->window() == &scene);
  }
  const QWindow* const focused = QGuiApplication::focusWindow();
  return scene.parent() == nullptr || focused == nullptr || focused == &scene;
}

}  // namespace

QQuickItem* focusedItem(const QQuickWindow& window) {
  QQuickItem* item = window.activeFocusItem();
  if (item == nullptr || holdsScene(*item, window)) {
    item = window.contentItem();
    // Bounded like every walk through items of the host's.
    for (int depth = 0; item != nullptr && depth < 1'000; ++depth) {
      QQuickItem* const inside = item->isFocusScope() ? item->scopedFocusItem() : nullptr;
      if (inside == nullptr) {
        break;
      }
      item = inside;
    }
  }
  return item == nullptr || holdsScene(*item, window) ? nullptr : item;
}

bool hasKeyFocus(const QQuickItem& item) {
  return item.hasFocus() && item.window() != nullptr && focusedItem(*item.window()) == &item &&
         isReachedByKeys(*item.window());
}

bool takesKeys(const QQuickItem& item) {
  for (const QQuickItem* taker = &item; taker != nullptr; taker = taker->parentItem()) {
    if (hasKeyHandler(*taker)) {
      return true;
    }
  }
  return false;
}

}  // namespace tarnix::qt6
