#include "platforms/qt6/quick/item_class.h"

#include <QMetaClassInfo>
#include <array>
#include <cstring>
#include <string_view>

#include "platforms/qt6/shared/class_name.h"

namespace tarnix::qt6 {

namespace {

struct KnownClass {
  const char* name;
  ItemKind kind;
};

// The class nearest to the item's own decides.
constexpr std::array knownClasses = {
    KnownClass{"QQuickRectangle", ItemKind::rectangle},
    KnownClass{"QQuickText", ItemKind::text},
    KnownClass{"QQuickTextInput", ItemKind::textInput},
    KnownClass{"QQuickTextEdit", ItemKind::textEdit},
    KnownClass{"QQuickImageBase", ItemKind::image},
    KnownClass{"QQuickImage", ItemKind::image},
    KnownClass{"QQuickIconImage", ItemKind::image},
    KnownClass{"QQuickShape", ItemKind::image},
    KnownClass{"QQuickPaintedItem", ItemKind::image},
    KnownClass{"QQuickAbstractButton", ItemKind::button},
    KnownClass{"QQuickCheckBox", ItemKind::toggle},
    KnownClass{"QQuickCheckDelegate", ItemKind::toggle},
    KnownClass{"QQuickRadioButton", ItemKind::toggle},
    KnownClass{"QQuickRadioDelegate", ItemKind::toggle},
    KnownClass{"QQuickSwitch", ItemKind::toggle},
    KnownClass{"QQuickSwitchDelegate", ItemKind::toggle},
    KnownClass{"QQuickTabButton", ItemKind::tab},
    KnownClass{"QQuickMenuItem", ItemKind::menuEntry},
    KnownClass{"QQuickComboBox", ItemKind::comboBox},
    KnownClass{"QQuickSpinBox", ItemKind::spinBox},
    KnownClass{"QQuickDoubleSpinBox", ItemKind::spinBox},
    KnownClass{"QQuickSlider", ItemKind::adjustable},
    KnownClass{"QQuickDial", ItemKind::adjustable},
    KnownClass{"QQuickScrollBar", ItemKind::adjustable},
    KnownClass{"QQuickTumbler", ItemKind::adjustable},
    KnownClass{"QQuickRangeSlider", ItemKind::rangeSlider},
    KnownClass{"QQuickProgressBar", ItemKind::progressBar},
    KnownClass{"QQuickSearchField", ItemKind::searchField},
    KnownClass{"QQuickTabBar", ItemKind::tabBar},
    KnownClass{"QQuickGroupBox", ItemKind::groupBox},
    KnownClass{"QQuickFlickable", ItemKind::flickable},
    KnownClass{"QQuickItemView", ItemKind::itemView},
    KnownClass{"QQuickTableView", ItemKind::tableView},
    KnownClass{"QQuickHeaderViewBase", ItemKind::headerView},
    KnownClass{"QQuickPathView", ItemKind::pathView},
};

struct Recognised {
  ItemKind kind = ItemKind::plain;
  /// The class of the library that decided. Properties are looked up in it, so that one that the
  /// application declares under the same name does not stand for what the item shows.
  const QMetaObject* metaObject = nullptr;
};

Recognised recognise(const QMetaObject& metaObject) {
  for (const QMetaObject* candidate = &metaObject; candidate != nullptr;
       candidate = candidate->superClass()) {
    for (const KnownClass& known : knownClasses) {
      if (std::strcmp(known.name, candidate->className()) == 0) {
        return {known.kind, candidate};
      }
    }
  }
  return {ItemKind::plain, &metaObject};
}

constexpr std::string_view librarysPrefix = "QQuick";
/// Of what a web view shows its page with.
constexpr std::string_view webEnginesPrefix = "QtWebEngineCore.";

/// What `metaObject` itself is registered as for QML; empty when it is not, or under its own name.
std::string_view registeredName(const QMetaObject& metaObject) {
  for (int index = metaObject.classInfoOffset(); index < metaObject.classInfoCount(); ++index) {
    const QMetaClassInfo info = metaObject.classInfo(index);
    const std::string_view value = info.value();
    if (std::strcmp(info.name(), "QML.Element") == 0 && value != "auto" && value != "anonymous") {
      return value;
    }
  }
  return {};
}

/// People know the library's items by what they are called in QML, not by the classes behind.
std::string nameOf(const QMetaObject& metaObject) {
  std::string name = writtenClassName(metaObject);
  if (name.starts_with(webEnginesPrefix)) {
    return "WebEngineView";
  }
  if (!name.starts_with(librarysPrefix)) {
    return name;
  }
  const QMetaObject* library = &metaObject;
  while (library->superClass() != nullptr && name != library->className()) {
    library = library->superClass();
  }
  const std::string_view registered = registeredName(*library);
  return registered.empty() ? name.substr(librarysPrefix.size()) : std::string(registered);
}

}  // namespace

ItemClass::ItemClass(const QMetaObject& metaObject) : name(nameOf(metaObject)) {
  const Recognised recognised = recognise(metaObject);
  kind = recognised.kind;
  isTouchArea = isDerivedFrom(&metaObject, "QQuickMouseArea") ||
                isDerivedFrom(&metaObject, "QQuickMultiPointTouchArea") ||
                isDerivedFrom(&metaObject, "QQuickPinchArea");
  isItemDelegate = isDerivedFrom(&metaObject, "QQuickItemDelegate");
  isSlider = isDerivedFrom(&metaObject, "QQuickSlider") || isDerivedFrom(&metaObject, "QQuickDial");
  // A rectangle with a role is as much its author's control as any other item.
  const bool isAuthors = kind == ItemKind::plain || kind == ItemKind::rectangle;
  const QMetaObject& library = isAuthors ? metaObject : *recognised.metaObject;
  text = Property(library, "text");
  textFormat = Property(library, "textFormat");
  // Fields of the plain kind have no placeholder; applications give them one of their own.
  placeholderText = Property(metaObject, "placeholderText");
  title = Property(library, "title");
  displayText = Property(library, "displayText");
  checked = Property(library, "checked");
  checkable = Property(library, "checkable");
  checkState = Property(library, "checkState");
  value = Property(library,
                   kind == ItemKind::adjustable && isDerivedFrom(&metaObject, "QQuickScrollBar")
                       ? "position"
                   : isDerivedFrom(&metaObject, "QQuickTumbler") ? "currentIndex"
                                                                 : "value");
  editable = Property(library, "editable");
  echoMode = Property(library, "echoMode");
  passwordCharacter = Property(library, "passwordCharacter");
  inputMethodHints = Property(library, "inputMethodHints");
  length = Property(library, "length");
  contentItem = Property(library, "contentItem");
  reuseItems = Property(library, "reuseItems");
  highlighted = Property(library, "highlighted");
}

}  // namespace tarnix::qt6
