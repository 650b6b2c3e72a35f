#pragma once

#include <QMetaObject>
#include <QPointer>
#include <QQuickWindow>
#include <memory>

#include "platforms/qt6/quick/root_seeker.h"
#include "platforms/qt6/quick/scene_overlay.h"
#include "platforms/qt6/shared/overlay_pane.h"

namespace tarnix::qt6 {

/// What is drawn over a Quick window.
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
};

}  // namespace tarnix::qt6
