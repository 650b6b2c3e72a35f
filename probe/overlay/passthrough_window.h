#pragma once

#include <functional>
#include <memory>

#include "probe/overlay/animator.h"
#include "probe/overlay/layer.h"
#include "probe/platform/display.h"
#include "probe/platform/overlay_surface.h"

namespace tarnix {

/// A window in front of all of the host's that no touch ever meets. The tree in it is all there is
/// while nothing is seen: the surface to draw on and the frames come with what there is to show and
/// go with it. Main thread.
class PassthroughWindow {
 public:
  /// `layout` is called whenever the root view has got another size or inset.
  PassthroughWindow(std::shared_ptr<platform::WindowScene> scene,
                    std::function<void(const platform::OverlaySurface::Place&)> layout);
  PassthroughWindow(const PassthroughWindow&) = delete;
  PassthroughWindow& operator=(const PassthroughWindow&) = delete;

  /// Null once the scene has gone.
  platform::WindowScene* windowScene() const;

  /// Whatever lies there, touches fall through to the host's windows.
  const overlay::Layer* hitTest(platform::Point) const { return nullptr; }

  /// What is drawn, for somebody who is about to add to it: from now on there are frames, until
  /// nothing moves any more. Null when the host has no window to draw on.
  overlay::Layer* rootView();
  /// Of the window in front, when `rootView` was there.
  const platform::OverlaySurface::Place& place() const { return place_; }

  overlay::Animator& animator() { return animator_; }
  /// Whether there is a surface, and frames.
  bool isShowing() const { return surface_ != nullptr; }
  /// The same tree, as it is, wherever it is shown.
  const overlay::Layer& tree() const { return root_; }

 private:
  bool follow();
  void showFrame(double timestamp);
  void dropEverything();
  void rest();

  const std::shared_ptr<platform::WindowScene> scene_;
  const std::function<void(const platform::OverlaySurface::Place&)> layout_;
  overlay::Layer root_{{}};
  overlay::Animator animator_;
  platform::OverlaySurface::Place place_;
  platform::DisplayList shown_;
  std::unique_ptr<platform::OverlaySurface> surface_;
  std::unique_ptr<platform::DisplayLink> frames_;
};

}  // namespace tarnix
