#pragma once

#include <QPointer>

#include "platforms/qt6/shared/overlay_pane.h"
#include "platforms/qt6/widgets/overlay_widget.h"

namespace tarnix::qt6 {

/// What is drawn over a window of widgets.
class WidgetPane : public OverlayPane {
 public:
  explicit WidgetPane(QWidget& host) : widget_(new OverlayWidget(host)) {}
  WidgetPane(const WidgetPane&) = delete;
  WidgetPane& operator=(const WidgetPane&) = delete;
  ~WidgetPane() override { delete widget_.data(); }

  void show(std::shared_ptr<const platform::DisplayList> list, QPointF origin) override {
    if (widget_ != nullptr) {
      widget_->show(std::move(list), origin);
    }
  }

  void setHiddenForPicture(bool isHidden) override {
    if (widget_ != nullptr) {
      widget_->setHiddenForPicture(isHidden);
    }
  }

 private:
  /// Goes with its host.
  QPointer<OverlayWidget> widget_;
};

}  // namespace tarnix::qt6
