#pragma once

#include <QRegion>
#include <QWidget>
#include <vector>

namespace tarnix::qt6 {

/// Those children of a widget that hide what stands behind them, as the toolkit itself sees it when
/// it leaves out painting that. Main thread.
class Covers {
 public:
  explicit Covers(const QWidget& container);

  /// What of `child`, in the coordinates of the container, its siblings in front hide.
  QRegion over(const QWidget& child) const;

 private:
  struct Cover {
    const QWidget* widget;
    QRect area;
    // Of the child in the container's list: those behind come first.
    int position;
  };

  std::vector<Cover> covers_;
};

}  // namespace tarnix::qt6
