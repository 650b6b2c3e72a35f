#include "platforms/qt6/shared/modality.h"

#include <QGuiApplication>
#include <QWindow>

namespace tarnix::qt6 {

namespace {

bool belongsTo(const QWindow* window, const QWindow& owner) {
  // Bounded: applications have been seen to make each other's window transient.
  for (int steps = 0; window != nullptr && steps < 64; ++steps) {
    if (window == &owner) {
      return true;
    }
    window = window->parent() != nullptr ? window->parent() : window->transientParent();
  }
  return false;
}

bool blocks(const QWindow& modal, const QWindow& window) {
  if (!modal.isVisible() || modal.modality() == Qt::NonModal || belongsTo(&window, modal)) {
    return false;
  }
  return modal.modality() == Qt::ApplicationModal || belongsTo(&modal, window);
}

}  // namespace

bool isBlockedByModal(const QWindow& window) {
  // The one that was opened last is over all others, also over those that it does not belong to.
  const QWindow* const last = QGuiApplication::modalWindow();
  if (last != nullptr && belongsTo(&window, *last)) {
    return false;
  }
  for (const QWindow* modal : QGuiApplication::topLevelWindows()) {
    if (blocks(*modal, window)) {
      return true;
    }
  }
  return false;
}

}  // namespace tarnix::qt6
