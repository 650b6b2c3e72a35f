#include "platforms/qt6/quick/scene_page_search.h"

#include <QQuickItem>
#include <QVariant>
#include <cstring>

#include "platforms/qt6/quick/hosted_view.h"
#include "platforms/qt6/quick/paint_order.h"
#include "platforms/qt6/shared/class_name.h"
#include "platforms/qt6/shared/surroundings.h"

namespace tarnix::qt6 {

namespace {

// The main thread is held no longer than for these. To tell whose type an item is takes as long as
// to pass many items over.
constexpr int mostItems = 4'000;
constexpr int costOfType = 20;
constexpr int siblingsForOne = 16;
constexpr int deepest = 200;

bool isOfClass(const QQuickItem& item, const char* name) {
  return isDerivedFrom(item.metaObject(), name);
}

bool isLoader(const QQuickItem& item) { return isOfClass(item, "QQuickLoader"); }

/// What stands in its window in the place of `item`: a loader, or the item itself.
const QQuickItem& inItsPlace(const QQuickItem& item) {
  const QQuickItem* const parent = item.parentItem();
  return parent != nullptr && isLoader(*parent) ? *parent : item;
}

bool isPage(const QQuickItem& item, double covered) {
  return covered >= smallestPage && isOfClass(item, "QQuickPage") &&
         !isOfClass(item, "QQuickPopupItem");
}

bool isSeen(const QQuickItem& item) {
  return item.isVisible() && item.opacity() >= smallestVisibleOpacity;
}

}  // namespace

void ScenePageSearch::addCertain(QObject& object) {
  chain_.push_back({&object, &finder_, hosted_view::title(object), true, false});
}

void ScenePageSearch::addPagesIn(const QQuickItem& item, const QRectF& area) {
  area_ = area;
  budget_ = mostItems;
  if (!area_.isEmpty()) {
    searchChildren(item, 0);
  }
}

double ScenePageSearch::coverage(const QQuickItem& item) const {
  if (item.width() <= 0 || item.height() <= 0) {
    return 0;
  }
  const QRectF seen = item.mapRectToScene(QRectF(QPointF(0, 0), item.size())).intersected(area_);
  return seen.width() * seen.height() / (area_.width() * area_.height());
}

QQuickItem* ScenePageSearch::currentPage(const QQuickItem& item) const {
  QObject* page = nullptr;
  if (isOfClass(item, "QQuickStackView") || isOfClass(item, "QQuickSwipeView")) {
    page = item.property("currentItem").value<QQuickItem*>();
  } else if (isOfClass(item, "QQuickStackLayout")) {
    for (QQuickItem* child : item.childItems()) {
      if (isSeen(*child)) {
        page = child;
      }
    }
  }
  return qobject_cast<QQuickItem*>(page);
}

bool ScenePageSearch::isOfApplicationsType(const QQuickItem& item) {
  budget_ -= costOfType;
  return budget_ >= 0 && hosted_view::isOfApplicationsType(item);
}

/// Whether there is something beside it to take its place.
bool ScenePageSearch::isExchangeable(const QQuickItem& item) {
  const QQuickItem& place = inItsPlace(item);
  if (&place != &item) {
    return true;
  }
  const QQuickItem* const parent = place.parentItem();
  if (parent == nullptr) {
    return false;
  }
  const QList<QQuickItem*> siblings = parent->childItems();
  budget_ -= static_cast<int>(siblings.size()) / siblingsForOne;
  for (const QQuickItem* sibling : siblings) {
    if (budget_ < 0) {
      return false;
    }
    if (sibling == &place || isSeen(*sibling)) {
      continue;
    }
    if (isLoader(*sibling) ||
        (sibling->width() * sibling->height() >= place.width() * place.height() * mostOfWindow &&
         isOfApplicationsType(*sibling))) {
      return true;
    }
  }
  return false;
}

bool ScenePageSearch::searchChildren(const QQuickItem& item, int depth) {
  if (depth > deepest) {
    return false;
  }
  if (QQuickItem* const page = currentPage(item)) {
    // While it comes in it may stand outside.
    return coverage(item) >= smallestPage && searchItem(*page, depth + 1, true);
  }
  const QList<QQuickItem*> children = inPaintOrder(item);
  // What is in front hides the rest.
  for (auto child = children.rbegin(); child != children.rend(); ++child) {
    if (--budget_ < 0) {
      return false;
    }
    if (isSeen(**child) && searchItem(**child, depth + 1, false)) {
      return true;
    }
  }
  return false;
}

bool ScenePageSearch::searchItem(QQuickItem& item, int depth, bool isPageOfContainer) {
  if (std::strcmp(item.metaObject()->className(), "QQuickOverlay") == 0) {
    return false;
  }
  if (isPageOfContainer && isLoader(item)) {
    auto* const loaded = item.property("item").value<QQuickItem*>();
    return loaded != nullptr && searchItem(*loaded, depth + 1, true);
  }
  const bool isOnlyHolder = item.width() <= 0 || item.height() <= 0;
  const double covered = isOnlyHolder ? 0 : coverage(item);
  if (!isPageOfContainer && !isOnlyHolder && covered < smallestPage) {
    return false;
  }
  const bool isOutermost =
      isOutermostPage_ && covered >= smallestPage && hosted_view::isDeclared(item);
  bool isFound = true;
  if (isPageOfContainer || isOutermost || isPage(item, covered)) {
    isOutermostPage_ = false;
    addCertain(item);
  } else if (covered >= mostOfWindow && isOfApplicationsType(item)) {
    chain_.push_back({&item, &finder_, hosted_view::title(item), isExchangeable(item), false});
  } else {
    isFound = false;
  }
  return searchChildren(item, depth) || isFound;
}

}  // namespace tarnix::qt6
