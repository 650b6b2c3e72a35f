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

/// Main thread.
const AccessibleType& typeOf(const QObject& accessible) {
  static const AccessibleType type(*accessible.metaObject());
  return type;
}

enum class AttachedType { other, accessible, toolTip, pathView, drawing };

AttachedType typeOf(const QMetaObject& metaObject) {
  // Addresses instead of names, once they are known: every child of every item passes here.
  static const QMetaObject* accessible = nullptr;
  static const QMetaObject* toolTip = nullptr;
  // The border of a rectangle.
  static const QMetaObject* pen = nullptr;
  if (&metaObject == accessible) {
    return AttachedType::accessible;
  }
  if (&metaObject == toolTip) {
    return AttachedType::toolTip;
  }
  if (&metaObject == pen) {
    return AttachedType::drawing;
  }
  const char* const name = metaObject.className();
  if (std::strncmp(name, "QQuick", 6) != 0) {
    return std::strcmp(name, "QGradient") == 0 ? AttachedType::drawing : AttachedType::other;
  }
  if (accessible == nullptr && std::strcmp(name, "QQuickAccessibleAttached") == 0) {
    accessible = &metaObject;
    return AttachedType::accessible;
  }
  if (toolTip == nullptr && std::strcmp(name, "QQuickToolTipAttached") == 0) {
    toolTip = &metaObject;
    return AttachedType::toolTip;
  }
  if (pen == nullptr && std::strcmp(name, "QQuickPen") == 0) {
    pen = &metaObject;
    return AttachedType::drawing;
  }
  // Every path view makes a class of its own for this one.
  return std::strcmp(name, "QQuickPathViewAttached") == 0 ? AttachedType::pathView
                                                          : AttachedType::other;
}

}  // namespace

AttachedProperties::AttachedProperties(const QQuickItem& item) {
  // Attached objects are children of what they are attached to.
  for (const QObject* child : item.children()) {
    if (child->isQuickItemType()) {
      continue;
    }
    switch (typeOf(*child->metaObject())) {
      case AttachedType::drawing:
        break;
      case AttachedType::other:
        areAmongOthers_ = true;
        break;
      case AttachedType::accessible:
        accessible_ = child;
        break;
      case AttachedType::toolTip:
        toolTip_ = child;
        break;
      case AttachedType::pathView:
        pathView_ = child;
        break;
    }
  }
}

QString AttachedProperties::name() const {
  return accessible_ == nullptr ? QString() : typeOf(*accessible_).name.string(*accessible_);
}

std::optional<QAccessible::Role> AttachedProperties::role() const {
  if (accessible_ == nullptr) {
    return std::nullopt;
  }
  const int given = typeOf(*accessible_).role.integer(*accessible_);
  return given == QAccessible::NoRole ? std::nullopt
                                      : std::optional(static_cast<QAccessible::Role>(given));
}

bool AttachedProperties::isIgnored() const {
  return accessible_ != nullptr && typeOf(*accessible_).ignored.boolean(*accessible_);
}

bool AttachedProperties::isCheckable() const {
  return accessible_ != nullptr && typeOf(*accessible_).checkable.boolean(*accessible_);
}

bool AttachedProperties::isChecked() const {
  return accessible_ != nullptr && typeOf(*accessible_).checked.boolean(*accessible_);
}

bool AttachedProperties::isSearchEdit() const {
  return accessible_ != nullptr && typeOf(*accessible_).searchEdit.boolean(*accessible_);
}

bool AttachedProperties::isPasswordEdit() const {
  return accessible_ != nullptr && typeOf(*accessible_).passwordEdit.boolean(*accessible_);
}

bool AttachedProperties::isSelected() const {
  return accessible_ != nullptr && typeOf(*accessible_).selected.boolean(*accessible_);
}

QString AttachedProperties::toolTip() const {
  if (toolTip_ == nullptr) {
    return {};
  }
  static const Property text(*toolTip_->metaObject(), "text");
  return text.string(*toolTip_);
}

bool AttachedProperties::isOnPath() const {
  return pathView_ == nullptr || Property(*pathView_->metaObject(), "onPath").boolean(*pathView_);
}

}  // namespace tarnix::qt6
