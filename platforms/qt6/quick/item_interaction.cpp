#include "platforms/qt6/quick/item_interaction.h"

#include <QQuickItem>
#include <QVariant>
#include <algorithm>

#include "platforms/qt6/shared/class_cache.h"
#include "platforms/qt6/shared/class_name.h"

namespace tarnix::qt6 {

namespace {

using platform::ViewKind;

/// What an object that belongs to an item says of it.
struct CompanionClass {
  explicit CompanionClass(const QMetaObject& metaObject)
      : isPointerHandler(isDerivedFrom(&metaObject, "QQuickPointerHandler") &&
                         !isDerivedFrom(&metaObject, "QQuickHoverHandler")),
        isAttachedByList(isDerivedFrom(&metaObject, "QQuickListViewAttached") ||
                         isDerivedFrom(&metaObject, "QQuickTreeViewAttached")),
        isAttachedByGrid(isDerivedFrom(&metaObject, "QQuickGridViewAttached") ||
                         isDerivedFrom(&metaObject, "QQuickTableViewAttached") ||
                         isDerivedFrom(&metaObject, "QQuickPathViewAttached")) {}

  bool isPointerHandler;
  bool isAttachedByList;
  bool isAttachedByGrid;
};

const CompanionClass& companionClassOf(const QObject& object) {
  static ClassCache<CompanionClass>& cache = *new ClassCache<CompanionClass>;
  return cache.of(object);
}

bool isEnabledHandler(const QObject* child) {
  return !child->isQuickItemType() && companionClassOf(*child).isPointerHandler &&
         child->property("enabled").toBool();
}

bool hasPointerHandler(const QQuickItem& item) {
  const QObjectList& children = item.children();
  return std::any_of(children.begin(), children.end(), isEnabledHandler);
}

bool isOnlyLookedAt(ItemKind kind) {
  return kind == ItemKind::text || kind == ItemKind::image || kind == ItemKind::progressBar ||
         kind == ItemKind::groupBox;
}

/// Whether it reacts to a press by itself.
bool isControl(ItemKind kind) {
  switch (kind) {
    case ItemKind::textInput:
    case ItemKind::button:
    case ItemKind::toggle:
    case ItemKind::tab:
    case ItemKind::menuEntry:
    case ItemKind::comboBox:
    case ItemKind::spinBox:
    case ItemKind::adjustable:
    case ItemKind::rangeSlider:
    case ItemKind::searchField:
      return true;
    default:
      return false;
  }
}

/// Whether people drag it or press into it although it is no control.
bool isDraggedOrEdited(ItemKind kind) {
  switch (kind) {
    case ItemKind::textEdit:
    case ItemKind::flickable:
    case ItemKind::itemView:
    case ItemKind::tableView:
    case ItemKind::headerView:
    case ItemKind::pathView:
      return true;
    default:
      return false;
  }
}

/// Rows and cells that the author made of something plain: views attach an object of theirs to
/// what they make.
ViewKind kindOfPlain(const QQuickItem& item) {
  for (const QObject* child : item.children()) {
    if (child->isQuickItemType()) {
      continue;
    }
    const CompanionClass& companion = companionClassOf(*child);
    if (companion.isAttachedByList) {
      return ViewKind::tableCell;
    }
    if (companion.isAttachedByGrid) {
      return ViewKind::collectionCell;
    }
  }
  return ViewKind::other;
}

}  // namespace

platform::TouchReactions touchReactionsOf(const QQuickItem& item, const ItemClass& itemClass,
                                          const ItemDescription& description) {
  const bool reactsByItself = isControl(itemClass.kind);
  const bool isHandled = !reactsByItself && description.mayHaveHandlers && hasPointerHandler(item);
  const bool isLink = (description.traits & platform::accessibility_traits::link) != 0;
  return {.isUserInteractionEnabled =
              description.isEnabled && (isLink || isHandled || !isOnlyLookedAt(itemClass.kind)),
          .isControl = reactsByItself,
          .hasGestureRecognizers =
              isHandled || itemClass.isTouchArea || isDraggedOrEdited(itemClass.kind)};
}

ViewKind viewKindOf(const QQuickItem& item, const ItemClass& itemClass) {
  switch (itemClass.kind) {
    case ItemKind::button:
      return itemClass.isItemDelegate ? ViewKind::tableCell : ViewKind::button;
    case ItemKind::tab:
    case ItemKind::menuEntry:
      return ViewKind::button;
    case ItemKind::text:
      return ViewKind::label;
    case ItemKind::textInput:
    case ItemKind::searchField:
      return ViewKind::textField;
    case ItemKind::textEdit:
      return ViewKind::textView;
    case ItemKind::toggle:
      return ViewKind::toggle;
    case ItemKind::adjustable:
      return itemClass.isSlider ? ViewKind::slider : ViewKind::other;
    case ItemKind::rangeSlider:
      return ViewKind::slider;
    case ItemKind::image:
      return ViewKind::image;
    case ItemKind::plain:
    case ItemKind::rectangle:
      return kindOfPlain(item);
    default:
      return ViewKind::other;
  }
}

}  // namespace tarnix::qt6
