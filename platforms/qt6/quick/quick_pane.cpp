#include "platforms/qt6/quick/quick_pane.h"

#include <utility>

namespace tarnix::qt6 {

QuickPane::QuickPane(QQuickWindow& window) : window_(&window) {
  overlay_->followFramesOf(window);
  // The last moment of the main thread before a frame: the item is there for no longer than that.
  seeking_ = QObject::connect(
      &window, &QQuickWindow::afterAnimating, &window,
      [this] {
        if (!overlay_->isInScene() && seeker_ == nullptr) {
          seeker_ = new RootSeeker(*window_, overlay_);
        }
      },
      Qt::DirectConnection);
  // Told late when the main thread was held: the scene may be at the next frame already.
  QObject::connect(&window, &QQuickWindow::frameSwapped, &receiver_, [this] {
    if (isFrameWanted_) {
      askForFrame();
    }
  });
}

QuickPane::~QuickPane() {
  QObject::disconnect(seeking_);
  delete seeker_.data();
  overlay_->end();
  if (window_ != nullptr) {
    window_->update();
  }
}

void QuickPane::show(std::shared_ptr<const platform::DisplayList> list, QPointF origin) {
  overlay_->show(std::move(list), origin);
  askForFrame();
}

void QuickPane::setHiddenForPicture(bool isHidden) {
  overlay_->setHiddenForPicture(isHidden);
  askForFrame();
}

void QuickPane::askForFrame() {
  isFrameWanted_ = overlay_->isBeingDrawn();
  if (!isFrameWanted_ && window_ != nullptr) {
    window_->update();
  }
}

}  // namespace tarnix::qt6
