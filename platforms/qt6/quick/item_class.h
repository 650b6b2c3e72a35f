#pragma once

#include <QMetaObject>
#include <string>

#include "platforms/qt6/quick/property.h"

namespace tarnix::qt6 {

/// What an item is to a person, as far as its class tells.
enum class ItemKind {
  /// Layouts, rectangles, and whatever is not named below.
  plain,
  rectangle,
  text,
  textInput,
  textEdit,
  image,
  button,
  /// Buttons that are on or off: check boxes, switches, radio buttons, as controls and as
  /// delegates.
  toggle,
  tab,
  menuEntry,
  comboBox,
  spinBox,
  adjustable,
  rangeSlider,
  progressBar,
  searchField,
  tabBar,
  groupBox,
  /// Scrolling containers whose content counts as a whole.
  flickable,
  /// Views that make their rows as needed: only what they show counts.
  itemView,
  tableView,
  /// A table of the titles of another's rows or columns.
  headerView,
  pathView,
};

/// What is known of a class of Quick items. The Controls library is known by name only, since not
/// every host that has Quick has it.
struct ItemClass {
  explicit ItemClass(const QMetaObject& metaObject);

  ItemKind kind = ItemKind::plain;
  /// As a person wrote it.
  std::string name;
  /// Whether it takes what is done with a pointer and shows nothing itself.
  bool isTouchArea = false;
  /// Whether it is the library's button for rows of a list.
  bool isItemDelegate = false;
  /// Of those that are adjustable: what has a handle on a track.
  bool isSlider = false;

  Property text;
  Property textFormat;
  Property placeholderText;
  Property title;
  Property displayText;
  Property checked;
  Property checkable;
  Property checkState;
  Property value;
  Property editable;
  Property echoMode;
  Property passwordCharacter;
  Property inputMethodHints;
  Property length;
  Property contentItem;
  Property reuseItems;
  Property highlighted;
};

}  // namespace tarnix::qt6
