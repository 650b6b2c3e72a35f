#pragma once

#include <QRectF>

#include "platforms/qt6/shared/screen.h"

class QQuickItem;

namespace tarnix::qt6 {

/// One look over the items of a scene for the pages that are on view in it. Main thread.
///
/// Only what covers a good part of the scene is looked into, and items without a size, which only
/// hold others: the rows of a list and the parts of controls are never touched.
class ScenePageSearch {
 public:
  ScenePageSearch(ScreenFinder& finder, ScreenChain& chain) : finder_(finder), chain_(chain) {}

  void addCertain(QObject& object);

  /// The scene belongs to no window that was declared in QML: its outermost item is the first page.
  void takeOutermostForPage() { isOutermostPage_ = true; }

  /// Adds the pages inside `item`, from the outermost inwards. `area` is what the whole would
  /// cover, in the scene.
  void addPagesIn(const QQuickItem& item, const QRectF& area);

 private:
  /// How much of `area_` the item covers, from 0 to 1.
  double coverage(const QQuickItem& item) const;
  QQuickItem* currentPage(const QQuickItem& item) const;
  bool isOfApplicationsType(const QQuickItem& item);
  bool isExchangeable(const QQuickItem& item);
  /// Returns whether there was one.
  bool searchChildren(const QQuickItem& item, int depth);
  bool searchItem(QQuickItem& item, int depth, bool isPageOfContainer);

  ScreenFinder& finder_;
  ScreenChain& chain_;
  QRectF area_;
  bool isOutermostPage_ = false;
  int budget_ = 0;
};

}  // namespace tarnix::qt6
