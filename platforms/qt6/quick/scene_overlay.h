#pragma once

#include <QMetaObject>
#include <QPointF>
#include <atomic>
#include <chrono>
#include <memory>

#include "probe/platform/drawing.h"

class QQuickWindow;
class QSGNode;

namespace tarnix::qt6 {

/// Figures in front of a scene, as nodes beside the tree of its items: no item stands for them.
/// Each figure is one picture of the scene graph, so that all renderers draw it. Main thread, but
/// for `synchronize` and `enterBy`, which the scene graph's thread calls while the main one waits,
/// and for the end of a frame.
class SceneOverlay : public std::enable_shared_from_this<SceneOverlay> {
 public:
  /// `window` keeps it for as long as there is something to do at its frames.
  void followFramesOf(QQuickWindow& window);

  void show(std::shared_ptr<const platform::DisplayList> list, QPointF origin);
  void setHiddenForPicture(bool isHidden);
  /// The nodes go with the next frame.
  void end();

  /// Whether another thread is at a frame.
  bool isBeingDrawn() const;
  bool isInScene() const { return node_ != nullptr; }
  /// Any node of the scene; leads to the root once all of them are in their places.
  void enterBy(QSGNode* node) { entry_ = node; }

 private:
  class Node;
  using Clock = std::chrono::steady_clock;

  void synchronize(QQuickWindow& window);
  void enter();
  void stopFollowing();
  void fill(QQuickWindow& window);

  std::shared_ptr<const platform::DisplayList> list_;
  QPointF origin_;
  bool isHiddenForPicture_ = false;
  bool isChanged_ = false;
  bool hasEnded_ = false;
  QMetaObject::Connection frames_;
  QMetaObject::Connection swaps_;
  /// When the frame began that another thread is at.
  std::atomic<Clock::time_point> frameBegan_ = Clock::time_point();
  QSGNode* entry_ = nullptr;
  /// Of the scene graph, which may go before this does.
  Node* node_ = nullptr;
};

}  // namespace tarnix::qt6
