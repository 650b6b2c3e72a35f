#include "platforms/qt6/quick/quick_pane.h"

#include <QThread>
#include <utility>

namespace tarnix::qt6 {

namespace {

// A window that is not on view may never draw what was asked for.
constexpr std::chrono::milliseconds longestFrame{500};

}  // namespace

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
  QObject::connect(
      &window, &QQuickWindow::afterRendering, &receiver_,
      [this, mainThread = QThread::currentThread()] {
        // Scenes inside widgets are never swapped. Another thread must not touch this.
        if (QThread::currentThread() == mainThread) {
          asked_.reset();
          isNextWanted_ = false;
        }
      },
      Qt::DirectConnection);
  QObject::connect(&window, &QQuickWindow::frameSwapped, &receiver_, [this] { frameIsDrawn(); });
}

QuickPane::~QuickPane() {
  QObject::disconnect(seeking_);
  delete seeker_.data();
  overlay_->end();
  asked_.reset();
  askForFrame();
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
  const Clock::time_point now = Clock::now();
  isNextWanted_ = asked_ && now - *asked_ < longestFrame;
  if (!isNextWanted_ && window_ != nullptr) {
    asked_ = now;
    window_->update();
  }
}

void QuickPane::frameIsDrawn() {
  asked_.reset();
  if (isNextWanted_) {
    askForFrame();
  }
}

}  // namespace tarnix::qt6
