#pragma once

#include <QPointer>
#include <QQuickWindow>

#include "platforms/qt6/quick/overlay_item.h"
#include "platforms/qt6/shared/overlay_pane.h"

namespace tarnix::qt6 {

/// What is drawn over a Quick window.
class QuickPane : public OverlayPane {
 public:
  explicit QuickPane(QQuickWindow& window) : item_(new OverlayItem(window)) {}
  QuickPane(const QuickPane&) = delete;
  QuickPane& operator=(const QuickPane&) = delete;
  ~QuickPane() override { delete item_.data(); }

  void show(std::shared_ptr<const platform::DisplayList> list, QPointF origin) override {
    item_->show(std::move(list), origin);
  }
  void setHiddenForPicture(bool isHidden) override { item_->setHiddenForPicture(isHidden); }

 private:
  /// Outlives its window, in which it is no more than a guest.
  QPointer<OverlayItem> item_;
};

}  // namespace tarnix::qt6
