#include "platforms/qt6/base/window_order.h"

#include <QGuiApplication>
#include <QVariant>
#include <QWindow>
#include <algorithm>

namespace tarnix::qt6 {

namespace {

bool isOnScreen(const QWindow& window) {
  // A scene that is drawn into a widget has a window without a surface of its own.
  return window.isVisible() && window.handle() != nullptr &&
         !window.property(ownWindowProperty).isValid();
}

bool isPopup(const QWindow& window) {
  // From 6.8 on a popup of the Controls library may have a window, which need not be of those
  // types.
  return window.type() == Qt::Popup || window.type() == Qt::ToolTip ||
         window.inherits("QQuickPopupWindow");
}

/// The window that `window` stands in or, being a popup, belongs to.
QWindow* owner(QWindow* window) {
  // Bounded: applications have been seen to make each other's window transient.
  for (int steps = 0; window != nullptr && steps < 64; ++steps) {
    if (window->parent() != nullptr) {
      window = window->parent();
    } else if (isPopup(*window)) {
      window = window->transientParent();
    } else {
      return isOnScreen(*window) ? window : nullptr;
    }
  }
  return nullptr;
}

int popupDepth(const QWindow* window) {
  int depth = 0;
  while (depth < 64 && window != nullptr && isPopup(*window)) {
    ++depth;
    window = window->transientParent();
  }
  return depth;
}

}  // namespace

WindowOrder& WindowOrder::shared() {
  static WindowOrder& instance = *new WindowOrder;
  return instance;
}

void WindowOrder::start() {
  if (auto* const application = qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
    lastActive_ = QGuiApplication::focusWindow();
    QObject::connect(application, &QGuiApplication::focusWindowChanged, [this](QWindow* window) {
      if (QWindow* const active = owner(window)) {
        lastActive_ = active;
      }
    });
  }
}

QList<QWindow*> WindowOrder::windows() {
  QList<QWindow*> windows = QGuiApplication::topLevelWindows();
  windows.removeIf([](const QWindow* window) { return !isOnScreen(*window) || isPopup(*window); });
  return windows;
}

QWindow* WindowOrder::keyWindow() const {
  if (QWindow* const window = owner(QGuiApplication::focusWindow())) {
    return window;
  }
  if (QWindow* const window = owner(QGuiApplication::modalWindow())) {
    return window;
  }
  if (lastActive_ != nullptr && isOnScreen(*lastActive_)) {
    return lastActive_;
  }
  const QList<QWindow*> all = windows();
  return all.isEmpty() ? nullptr : all.last();
}

QList<QWindow*> WindowOrder::popups() {
  QList<QWindow*> popups = QGuiApplication::topLevelWindows();
  popups.removeIf([](const QWindow* window) { return !isOnScreen(*window) || !isPopup(*window); });
  // A submenu is opened over the menu that it belongs to.
  std::stable_sort(popups.begin(), popups.end(), [](const QWindow* left, const QWindow* right) {
    return popupDepth(left) < popupDepth(right);
  });
  return popups;
}

}  // namespace tarnix::qt6
