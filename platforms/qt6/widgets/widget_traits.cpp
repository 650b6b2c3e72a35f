#include "platforms/qt6/widgets/widget_traits.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleInterface>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>

#include "platforms/qt6/shared/role_traits.h"
#include "platforms/qt6/widgets/widget_label.h"

namespace tarnix::qt6 {

namespace {

namespace traits = platform::accessibility_traits;
using platform::AccessibilityTraits;

bool hasChildWidgets(const QWidget& widget) {
  for (const QObject* child : widget.children()) {
    if (child->isWidgetType() && !static_cast<const QWidget*>(child)->isWindow()) {
      return true;
    }
  }
  return false;
}

AccessibilityTraits traitsOfLabel(const QLabel& label) {
  const VisibleText text = textOfLabel(label);
  if (text.text.trimmed().isEmpty()) {
    return traits::image;
  }
  return text.isLink ? traits::link : traits::staticText;
}

/// A widget that its application paints itself and gave a name to. Its role is known to nobody
/// else.
std::optional<AccessibilityTraits> traitsOfNamed(const QWidget& widget) {
  if (widget.accessibleName().trimmed().isEmpty() || hasChildWidgets(widget)) {
    return std::nullopt;
  }
  QAccessibleInterface* const interface =
      QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&widget));
  return interface == nullptr ? traits::none
                              : traitsOfRole(interface->role()).value_or(traits::none);
}

std::optional<AccessibilityTraits> traitsOfKind(const QWidget& widget, WidgetKind kind) {
  switch (kind) {
    case WidgetKind::label:
      return traitsOfLabel(static_cast<const QLabel&>(widget));
    case WidgetKind::button: {
      const auto& button = static_cast<const QAbstractButton&>(widget);
      return button.isCheckable() && button.isChecked() ? traits::button | traits::selected
                                                        : traits::button;
    }
    case WidgetKind::toggle:
    case WidgetKind::comboBox:
      return traits::button;
    case WidgetKind::spinBox:
    case WidgetKind::slider:
      return traits::adjustable;
    case WidgetKind::groupBox:
      return static_cast<const QGroupBox&>(widget).isCheckable() ? traits::button : traits::header;
    case WidgetKind::dockWidget:
    case WidgetKind::subWindow:
      return traits::header;
    case WidgetKind::tabBar:
      return traits::tabBar;
    case WidgetKind::statusBar:
    case WidgetKind::lcdNumber:
      return traits::staticText;
    case WidgetKind::lineEdit:
    case WidgetKind::textEdit:
    case WidgetKind::plainTextEdit:
    case WidgetKind::progressBar:
      return traits::none;
    case WidgetKind::plain:
      return traitsOfNamed(widget);
    case WidgetKind::menuBar:
    case WidgetKind::menu:
    case WidgetKind::header:
    case WidgetKind::itemView:
    case WidgetKind::columnView:
    case WidgetKind::scrollArea:
    case WidgetKind::subWindowControls:
    case WidgetKind::graphicsView:
    case WidgetKind::quickWidget:
    case WidgetKind::windowContainer:
      break;
  }
  return std::nullopt;
}

}  // namespace

std::optional<AccessibilityTraits> traitsOf(const QWidget& widget, WidgetKind kind) {
  std::optional<AccessibilityTraits> result = traitsOfKind(widget, kind);
  if (result && !widget.isEnabled()) {
    *result |= traits::notEnabled;
  }
  return result;
}

bool isTextField(const QWidget& widget, WidgetKind kind) {
  switch (kind) {
    case WidgetKind::lineEdit:
    case WidgetKind::textEdit:
    case WidgetKind::plainTextEdit:
    case WidgetKind::spinBox:
      return true;
    case WidgetKind::comboBox:
      return static_cast<const QComboBox&>(widget).isEditable();
    default:
      return false;
  }
}

}  // namespace tarnix::qt6
