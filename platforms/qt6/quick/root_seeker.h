#pragma once

#include <QQuickItem>
#include <memory>

#include "platforms/qt6/quick/scene_overlay.h"

class QQuickWindow;

namespace tarnix::qt6 {

/// An item that stands in a scene for one frame, to find the nodes of it: only an item is told of
/// them. It shows nothing, has no size, contains no point and accepts no button; nobody is told
/// that it comes or goes. Main thread, but for the frame.
class RootSeeker : public QQuickItem {
 public:
  /// For a frame that is about to be drawn. Deletes itself after it.
  RootSeeker(QQuickWindow& window, std::shared_ptr<SceneOverlay> overlay);
  ~RootSeeker() override;

  bool contains(const QPointF&) const override { return false; }
  bool event(QEvent* event) override;

  /// Takes ours out of the items of a scene.
  static void removeFrom(QList<QQuickItem*>& items);

 protected:
  QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;

 private:
  void leave();

  const std::shared_ptr<SceneOverlay> overlay_;
};

}  // namespace tarnix::qt6
