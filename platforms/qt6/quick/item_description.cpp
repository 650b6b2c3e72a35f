#include "platforms/qt6/quick/item_description.h"

#include <QQuickItem>

#include "platforms/qt6/quick/attached_properties.h"
#include "platforms/qt6/quick/item_label.h"
#include "platforms/qt6/shared/class_cache.h"
#include "platforms/qt6/shared/role_traits.h"
#include "platforms/qt6/shared/spoken_label.h"
#include "platforms/qt6/shared/visible_text.h"

namespace tarnix::qt6 {

namespace {

namespace traits = platform::accessibility_traits;
using platform::AccessibilityTraits;

QString onOrOff(bool isOn) { return isOn ? QStringLiteral("1") : QStringLiteral("0"); }

QString numberText(double number) { return QString::number(number, 'g', 6); }

bool isField(ItemKind kind) {
  return kind == ItemKind::textInput || kind == ItemKind::textEdit || kind == ItemKind::searchField;
}

/// Whether the library knows nothing of what it is for.
bool isAuthorsOwn(ItemKind kind) { return kind == ItemKind::plain || kind == ItemKind::rectangle; }

/// Absent for what holds others and is no element itself.
std::optional<AccessibilityTraits> traitsOfKind(ItemKind kind) {
  switch (kind) {
    case ItemKind::text:
      return traits::staticText;
    case ItemKind::textInput:
    case ItemKind::textEdit:
    case ItemKind::progressBar:
      return traits::none;
    case ItemKind::image:
      return traits::image;
    case ItemKind::button:
    case ItemKind::toggle:
    case ItemKind::tab:
    case ItemKind::menuEntry:
    case ItemKind::comboBox:
      return traits::button;
    case ItemKind::spinBox:
    case ItemKind::adjustable:
    case ItemKind::rangeSlider:
      return traits::adjustable;
    case ItemKind::searchField:
      return traits::searchField;
    case ItemKind::tabBar:
      return traits::tabBar;
    case ItemKind::plain:
    case ItemKind::rectangle:
    case ItemKind::groupBox:
    case ItemKind::flickable:
    case ItemKind::itemView:
    case ItemKind::tableView:
    case ItemKind::headerView:
    case ItemKind::pathView:
      break;
  }
  return std::nullopt;
}

std::optional<QString> rangeText(const QQuickItem& item) {
  QStringList ends;
  for (const char* end : {"first", "second"}) {
    const QObject* const handle = Property(*item.metaObject(), end).object(item);
    if (handle == nullptr) {
      return std::nullopt;
    }
    ends << numberText(Property(*handle->metaObject(), "value").number(*handle).value_or(0));
  }
  return ends.join(QStringLiteral(" \u2013 "));
}

std::optional<QString> valueOf(const QQuickItem& item, const ItemClass& itemClass,
                               const AttachedProperties& attached) {
  switch (itemClass.kind) {
    case ItemKind::textInput:
    case ItemKind::textEdit:
      return fieldText(item, itemClass, attached);
    case ItemKind::searchField:
      return itemClass.text.string(item);
    case ItemKind::toggle:
      if (itemClass.checkState.integer(item) == Qt::PartiallyChecked) {
        return QStringLiteral("mixed");
      }
      return onOrOff(itemClass.checked.boolean(item));
    case ItemKind::menuEntry:
      if (!itemClass.checkable.boolean(item)) {
        return std::nullopt;
      }
      return onOrOff(itemClass.checked.boolean(item));
    case ItemKind::comboBox:
    case ItemKind::spinBox:
      return itemClass.displayText.string(item);
    case ItemKind::adjustable:
    case ItemKind::progressBar:
      if (const std::optional<double> number = itemClass.value.number(item)) {
        return numberText(*number);
      }
      return std::nullopt;
    case ItemKind::rangeSlider:
      return rangeText(item);
    default:
      break;
  }
  if (!isAuthorsOwn(itemClass.kind)) {
    return std::nullopt;
  }
  const std::optional<QAccessible::Role> role = attached.role();
  if (attached.isCheckable() || (role && isCheckableRole(*role))) {
    return onOrOff(attached.isChecked());
  }
  if (role) {
    if (const std::optional<double> number = itemClass.value.number(item)) {
      return numberText(*number);
    }
  }
  return std::nullopt;
}

bool isSelected(const QQuickItem& item, const ItemClass& itemClass,
                const AttachedProperties& attached) {
  switch (itemClass.kind) {
    case ItemKind::text:
      return false;
    case ItemKind::tab:
      return itemClass.checked.boolean(item);
    case ItemKind::button:
      return itemClass.checkable.boolean(item) && itemClass.checked.boolean(item);
    default:
      return attached.isSelected();
  }
}

/// A link, the title of a group, row or column, or just a text.
AccessibilityTraits traitsOfText(const QQuickItem& item, const ItemClass& itemClass,
                                 const ItemClass* parent, const Surroundings& surroundings) {
  if (surroundings.insideHeader) {
    return traits::header;
  }
  if (parent != nullptr && parent->kind == ItemKind::groupBox && item.parentItem() != nullptr &&
      parent->title.string(*item.parentItem()) == itemClass.text.string(item)) {
    return traits::header;
  }
  const auto format = static_cast<TextFormat>(itemClass.textFormat.integer(item));
  if (format == TextFormat::plain) {
    return traits::staticText;
  }
  const QString text = itemClass.text.string(item);
  return text.contains(u'<') || format == TextFormat::markdown
             ? (visibleText(text, format).isLink ? traits::link : traits::staticText)
             : traits::staticText;
}

}  // namespace

const ItemClass& classOf(const QQuickItem& item) {
  static ClassCache<ItemClass>& cache = *new ClassCache<ItemClass>;
  return cache.of(item);
}

ItemDescription describe(const QQuickItem& item, const ItemClass& itemClass,
                         const ItemClass* parent, const Surroundings& surroundings,
                         const SpokenText* spoken) {
  ItemDescription result;
  result.isEnabled = item.isEnabled();
  const ItemKind kind = itemClass.kind;
  if (!item.isVisible() || surroundings.opacity * item.opacity() < smallestVisibleOpacity ||
      (surroundings.insideCompositeControl && isField(kind))) {
    return result;
  }
  const AttachedProperties attached(item);
  result.mayHaveHandlers = attached.areAmongOthers();
  const std::optional<QAccessible::Role> role = attached.role();
  std::optional<AccessibilityTraits> ownTraits = traitsOfKind(kind);
  if (role) {
    const std::optional<AccessibilityTraits> given = traitsOfRole(*role);
    // While a screen reader runs the library gives its own controls a role, which says less than
    // their class does.
    if (!ownTraits || given.value_or(traits::none) != traits::none) {
      ownTraits = given;
    }
  } else if (!ownTraits && isAuthorsOwn(kind) && !attached.name().isEmpty()) {
    ownTraits = traits::none;
  }
  if (!ownTraits || attached.isIgnored()) {
    return result;
  }
  result.label = inOneLine(labelOf(item, itemClass, attached));
  if (!saysSomething(result.label, *ownTraits) ||
      (kind == ItemKind::text && SpokenText::covers(spoken, result.label))) {
    return result;
  }
  result.isElement = true;
  if (kind == ItemKind::text && *ownTraits == traits::staticText) {
    ownTraits = traitsOfText(item, itemClass, parent, surroundings);
  }
  result.traits = *ownTraits;
  result.isTextField = isField(kind) || role == QAccessible::EditableText ||
                       ((kind == ItemKind::comboBox || kind == ItemKind::spinBox) &&
                        itemClass.editable.boolean(item));
  if (result.isTextField && attached.isSearchEdit()) {
    result.traits |= traits::searchField;
  }
  if (isSelected(item, itemClass, attached)) {
    result.traits |= traits::selected;
  }
  if (!result.isEnabled) {
    result.traits |= traits::notEnabled;
  }
  result.value = valueOf(item, itemClass, attached);
  if (result.value) {
    result.value = withoutLineBreaks(*std::move(result.value));
  }
  return result;
}

}  // namespace tarnix::qt6
