#include "platforms/qt6/quick/attached_properties.h"

#include <QQuickItem>
#include <cstring>

#include "platforms/qt6/quick/property.h"
#include "platforms/qt6/shared/class_name.h"

namespace tarnix::qt6 {

namespace {

/// The properties of one of the library's attached types; known once an object of it was met.
struct AccessibleType {
  explicit AccessibleType(const QMetaObject& type)
      : name(type, "name"),
        role(type, "role"),
        ignored(type, "ignored"),
        checkable(type, "checkable"),
        checked(type, "checked"),
        searchEdit(type, "searchEdit"),
        passwordEdit(type, "passwordEdit"),
        selected(type, "selected") {}

  Property name, role, ignored, checkable, checked, searchEdit, passwordEdit, selected;
};

enum class AttachedType { other, accessible, toolTip, pathView };

AttachedType typeOf(const QMetaObject& metaObject) {
  // Addresses instead of names, once they are known: every child of every item passes here.
  static const QMetaObject* accessible = nullptr;
  static const QMetaObject* toolTip = nullptr;
  if (&metaObject == accessible) {
    return AttachedType::accessible;
  }
  if (&metaObject == toolTip) {
    return AttachedType::toolTip;
  }
  const char* const name = metaObject.className();
  if (std::strncmp(name, "QQuick", 6) != 0) {
    return AttachedType::other;
  }
  if (accessible == nullptr && std::strcmp(name, "QQuickAccessibleAttached") == 0) {
    accessible = &metaObject;
    return AttachedType::accessible;
  }
  if (toolTip == nullptr && std::strcmp(name, "QQuickToolTipAttached") == 0) {
    toolTip = &metaObject;
    return AttachedType::toolTip;
  }
  // Every path view makes a class of its own for this one.
  return std::strcmp(name, "QQuickPathViewAttached") == 0 ? AttachedType::pathView
                                                          : AttachedType::other;
}

}  // namespace

AttachedProperties::AttachedProperties(const QQuickItem& item) {
  // Attached objects are children of what they are attached to.
  for (const QObject* child : item.children()) {
    const QMetaObject& metaObject = *child->metaObject();
    switch (typeOf(metaObject)) {
      case AttachedType::other:
        break;
      case AttachedType::accessible: {
        static const AccessibleType type(metaObject);
        name = type.name.string(*child);
        const auto given = static_cast<QAccessible::Role>(type.role.integer(*child));
        if (given != QAccessible::NoRole) {
          role = given;
        }
        isIgnored = type.ignored.boolean(*child);
        isCheckable = type.checkable.boolean(*child);
        isChecked = type.checked.boolean(*child);
        isSearchEdit = type.searchEdit.boolean(*child);
        isPasswordEdit = type.passwordEdit.boolean(*child);
        isSelected = type.selected.boolean(*child);
        break;
      }
      case AttachedType::toolTip: {
        static const Property text(metaObject, "text");
        toolTip = text.string(*child);
        break;
      }
      case AttachedType::pathView: {
        static const Property onPath(metaObject, "onPath");
        isOnPath = onPath.boolean(*child);
        break;
      }
    }
  }
}

}  // namespace tarnix::qt6
