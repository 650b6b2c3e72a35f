#pragma once

#include <QHash>
#include <QRegion>
#include <vector>

class QQuickItem;

namespace tarnix::qt6 {

/// The opaque rectangles of a scene (the ground of a page, a dialog, a drawer) and what they hide:
/// what is painted before them and lies under them is on no picture of the window, though it says
/// that it is visible. As the scene was when this was made. Main thread.
class SceneCovers {
 public:
  explicit SceneCovers(QQuickItem& root);

  /// What of `area` hides behind rectangles that are painted after `item`. Both in the scene's
  /// coordinates.
  QRegion over(const QQuickItem& item, const QRectF& area) const;

 private:
  struct Cover {
    QRect area;
    int order;
  };
  /// What holds for everything below an item.
  struct Place {
    bool isOpaque;
    QRectF clip;
  };

  void visit(QQuickItem& item, const Place& place, int depth);
  void note(const QQuickItem& item, const Place& place);

  std::vector<Cover> covers_;
  QHash<const QQuickItem*, int> paintOrder_;
  double smallestCover_ = 0;
};

}  // namespace tarnix::qt6
