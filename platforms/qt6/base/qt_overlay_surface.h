#pragma once

#include <QPointF>
#include <QPointer>
#include <QWindow>
#include <functional>
#include <memory>
#include <vector>

#include "platforms/qt6/shared/overlay_pane.h"
#include "probe/platform/overlay_surface.h"

namespace tarnix::qt6 {

/// A surface that spans the desktop as far as the host's windows do: each window that a figure
/// touches gets a pane with its part of the picture. Its origin is the key window's corner. Main
/// thread.
class QtOverlaySurface : public platform::OverlaySurface {
 public:
  QtOverlaySurface() = default;
  QtOverlaySurface(const QtOverlaySurface&) = delete;
  QtOverlaySurface& operator=(const QtOverlaySurface&) = delete;
  ~QtOverlaySurface() override;

  std::optional<Place> place() override;
  void show(const platform::DisplayList& list) override;

 private:
  struct PlacedPane {
    QPointer<QWindow> window;
    std::unique_ptr<OverlayPane> pane;
  };

  OverlayPane* paneOver(QWindow& window);
  void removePanes(const std::function<bool(QWindow*)>& isToGo);

  QPointer<QWindow> front_;
  /// On the desktop; of the window in front when it was looked at last.
  QPointF origin_;
  bool hasOrigin_ = false;
  std::vector<PlacedPane> panes_;
};

}  // namespace tarnix::qt6
