#pragma once

#include <QPointF>
#include <QWidget>
#include <memory>
#include <vector>

#include "probe/platform/drawing.h"

namespace tarnix::qt6 {

/// A child in front of all others of a window that shows figures and is otherwise not there: it
/// takes no mouse, no focus and no place in a layout; its parent never learns of it, since some
/// parents adopt every child that they are told of; assistive technology does not see it. Main
/// thread.
class OverlayWidget : public QWidget {
 public:
  /// `host` is a window of its own.
  explicit OverlayWidget(QWidget& host);
  ~OverlayWidget() override;

  void show(std::shared_ptr<const platform::DisplayList> list, QPointF origin);
  void setHiddenForPicture(bool isHidden) { isHiddenForPicture_ = isHidden; }

  /// Whether a child of the host is one of ours.
  static bool isOne(const QObject& child);
  /// Whether what `host` has painted has figures of ours in it.
  static bool isPaintedOver(const QWidget& host);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QRegion area() const;

  std::shared_ptr<const platform::DisplayList> list_;
  QPointF origin_;
  bool isHiddenForPicture_ = false;
  bool hasPainted_ = false;
};

}  // namespace tarnix::qt6
