#pragma once

#include <QRegion>
#include <QSizeF>
#include <vector>

#include "platforms/qt6/quick/item_class.h"
#include "platforms/qt6/shared/surroundings.h"

class QQuickItem;

namespace tarnix::qt6 {

/// The opaque rectangles of a scene (the ground of a page, a dialog, a drawer) and what they hide:
/// what is painted before them and lies under them is on no picture of the window, though it says
/// that it is visible. Main thread.
class SceneCovers {
 public:
  explicit SceneCovers(QSizeF size);

  /// Adds `item` if it is such a rectangle. `inside` is what holds for its children; `paintOrder`
  /// grows from item to item.
  void note(const QQuickItem& item, const ItemClass& itemClass, const Surroundings& inside,
            int paintOrder);

  /// What of `area`, on the screen, hides behind rectangles that are painted after `paintOrder`.
  QRegion over(int paintOrder, const QRectF& area) const;

 private:
  struct Cover {
    QRect area;
    int paintOrder;
  };

  std::vector<Cover> covers_;
  double smallestCover_;
};

}  // namespace tarnix::qt6
