#include "probe/overlay/passthrough_window.h"

#include <utility>

#include "probe/platform/main_thread.h"

namespace tarnix {

PassthroughWindow::PassthroughWindow(
    std::shared_ptr<platform::WindowScene> scene,
    std::function<void(const platform::OverlaySurface::Place&)> layout)
    : scene_(std::move(scene)), layout_(std::move(layout)) {}

platform::WindowScene* PassthroughWindow::windowScene() const {
  return scene_->isConnected() ? scene_.get() : nullptr;
}

overlay::Layer* PassthroughWindow::rootView() {
  platform::OverlaySurfaces* const surfaces = platform::current().overlaySurfaces;
  if (surface_ == nullptr && surfaces != nullptr) {
    surface_ = surfaces->makeSurface(*scene_);
  }
  if (surface_ == nullptr || !follow()) {
    return nullptr;
  }
  if (frames_ == nullptr) {
    frames_ = platform::current().display->displayLink(
        [this](std::chrono::duration<double> timestamp) {
          platform::assertMainThread();
          try {
            showFrame(timestamp.count());
          } catch (...) {
            // Memory ran out. What was to be seen is not worth the host.
            dropEverything();
          }
        },
        platform::TickDelivery::AtOnce);
  }
  return &root_;
}

/// False when there is no window to draw on any more: then nothing is left.
bool PassthroughWindow::follow() {
  const std::optional<platform::OverlaySurface::Place> place = surface_->place();
  if (!place) {
    dropEverything();
    return false;
  }
  if (place->movedBy != platform::Point{}) {
    for (const std::shared_ptr<overlay::Layer>& layer : root_.sublayers()) {
      layer->moveBy(place->movedBy);
    }
  }
  const bool isChanged = place->size != root_.size() || place->bottomInset != place_.bottomInset ||
                         place->movedBy != platform::Point{};
  place_ = *place;
  if (isChanged) {
    root_.setSize(place_.size);
    layout_(place_);
  }
  return true;
}

void PassthroughWindow::showFrame(double timestamp) {
  if (!follow()) {
    return;
  }
  animator_.advance(root_, timestamp);
  platform::DisplayList list = root_.displayList(animator_.now());
  if (list != shown_) {
    surface_->show(list);
    shown_ = std::move(list);
  }
  if (!animator_.hasPendingCompletions() && !root_.needsFrames(animator_.now())) {
    rest();
  }
}

void PassthroughWindow::dropEverything() {
  root_.removeSublayers();
  animator_ = {};
  rest();
}

void PassthroughWindow::rest() {
  shown_.clear();
  surface_.reset();
  // Last: this may be its own tick.
  frames_.reset();
}

}  // namespace tarnix
