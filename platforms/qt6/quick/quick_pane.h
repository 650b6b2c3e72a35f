#pragma once

#include <QMetaObject>
#include <QObject>
#include <QPointer>
#include <QQuickWindow>
#include <memory>

#include "platforms/qt6/quick/root_seeker.h"
#include "platforms/qt6/quick/scene_overlay.h"
#include "platforms/qt6/shared/overlay_pane.h"

namespace tarnix::qt6 {

/// What is drawn over a Quick window. Main thread.
///
/// A scene that is drawn on a thread of its own makes the main thread wait when it is to be drawn
/// again before it is through with the last frame. No frame is asked for so early: where drawing is
/// slow the effect has fewer frames, and the application does not notice.
class QuickPane : public OverlayPane {
 public:
  explicit QuickPane(QQuickWindow& window);
  QuickPane(const QuickPane&) = delete;
  QuickPane& operator=(const QuickPane&) = delete;
  ~QuickPane() override;

  void show(std::shared_ptr<const platform::DisplayList> list, QPointF origin) override;
  void setHiddenForPicture(bool isHidden) override;

 private:
  void askForFrame();

  const QPointer<QQuickWindow> window_;
  const std::shared_ptr<SceneOverlay> overlay_ = std::make_shared<SceneOverlay>();
  QPointer<RootSeeker> seeker_;
  QMetaObject::Connection seeking_;
  bool isFrameWanted_ = false;
  /// What waits in the queue for this pane goes with it. Last: the first to go.
  const QObject receiver_;
};

}  // namespace tarnix::qt6
