#include "platforms/qt6/quick/root_seeker.h"

#include <QCoreApplication>
#include <QEvent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QSGTransformNode>
#include <QSignalBlocker>
#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace tarnix::qt6 {

namespace {

/// Few, and none most of the time.
std::vector<const RootSeeker*>& living() {
  static std::vector<const RootSeeker*>& instance = *new std::vector<const RootSeeker*>;
  return instance;
}

constexpr QEvent::Type hasFound = QEvent::User;

}  // namespace

RootSeeker::RootSeeker(QQuickWindow& window, std::shared_ptr<SceneOverlay> overlay)
    : overlay_(std::move(overlay)) {
  // Without a parent that owns it: it is no object in the host's tree of objects.
  QQmlEngine::setObjectOwnership(this, QQmlEngine::CppOwnership);
  setFlag(ItemHasContents);
  setAcceptedMouseButtons(Qt::NoButton);
  living().push_back(this);
  QQuickItem* const content = window.contentItem();
  // Where a child of the host's begins, so that the rectangle around them all stays what it is.
  const QList<QQuickItem*> children = content->childItems();
  if (!children.isEmpty()) {
    setPosition(children.first()->position());
  }
  const QSignalBlocker unnoticed(content);
  setParentItem(content);
}

RootSeeker::~RootSeeker() {
  leave();
  std::erase(living(), this);
}

void RootSeeker::leave() {
  if (parentItem() != nullptr) {
    const QSignalBlocker unnoticed(parentItem());
    setParentItem(nullptr);
  }
}

void RootSeeker::removeFrom(QList<QQuickItem*>& items) {
  if (!living().empty()) {
    items.removeIf([](const QQuickItem* item) {
      return std::find(living().begin(), living().end(), item) != living().end();
    });
  }
}

bool RootSeeker::event(QEvent* event) {
  if (event->type() != hasFound) {
    return QQuickItem::event(event);
  }
  leave();
  deleteLater();
  return true;
}

QSGNode* RootSeeker::updatePaintNode(QSGNode*, UpdatePaintNodeData* data) {
  overlay_->enterBy(data->transformNode);
  // Before anything else that the main thread is to do.
  QCoreApplication::postEvent(this, new QEvent(hasFound), std::numeric_limits<int>::max());
  return nullptr;
}

}  // namespace tarnix::qt6
