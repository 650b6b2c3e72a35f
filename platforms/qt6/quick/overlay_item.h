#pragma once

#include <QPointF>
#include <QQuickItem>
#include <memory>

#include "probe/platform/drawing.h"

class QQuickWindow;

namespace tarnix::qt6 {

/// An item in front of all others of a scene that shows figures and is otherwise not there: it has
/// no size, contains no point, accepts no button and takes no focus. Each figure is one picture of
/// the scene graph, so that all renderers draw it. Main thread, but for the painting.
class OverlayItem : public QQuickItem {
 public:
  explicit OverlayItem(QQuickWindow& window);
  ~OverlayItem() override;

  void show(std::shared_ptr<const platform::DisplayList> list, QPointF origin);
  void setHiddenForPicture(bool isHidden);

  bool contains(const QPointF&) const override { return false; }

  /// Takes ours out of the items of a scene.
  static void removeFrom(QList<QQuickItem*>& items);

 protected:
  QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;

 private:
  QSGNode* makeNode(const platform::Figure& figure) const;

  std::shared_ptr<const platform::DisplayList> list_;
  QPointF origin_;
  bool isHiddenForPicture_ = false;
};

}  // namespace tarnix::qt6
