#include "platforms/qt6/widgets/widget_interaction.h"

#include <QAbstractScrollArea>
#include <QGroupBox>
#include <QLabel>
#include <QScrollBar>
#include <QWidget>

#include "platforms/qt6/widgets/own_handlers.h"
#include "platforms/qt6/widgets/widget_label.h"

namespace tarnix::qt6 {

namespace {

using platform::ViewKind;

bool reacts(const QLabel& label) {
  const Qt::TextInteractionFlags flags = label.textInteractionFlags();
  const bool isSelectable = flags.testAnyFlags(Qt::TextSelectableByMouse | Qt::TextEditable);
  return isSelectable || (flags.testFlag(Qt::LinksAccessibleByMouse) && textOfLabel(label).isLink);
}

}  // namespace

bool isUserInteractionEnabled(const QWidget& widget, WidgetKind kind) {
  if (!widget.isEnabled() || widget.testAttribute(Qt::WA_TransparentForMouseEvents)) {
    return false;
  }
  switch (kind) {
    case WidgetKind::label:
      return reacts(static_cast<const QLabel&>(widget)) || hasOwnPressHandler(widget);
    case WidgetKind::groupBox:
      return static_cast<const QGroupBox&>(widget).isCheckable();
    case WidgetKind::progressBar:
    case WidgetKind::lcdNumber:
    case WidgetKind::statusBar:
      return hasOwnPressHandler(widget);
    default:
      return true;
  }
}

bool isControl(const QWidget& widget, WidgetKind kind) {
  switch (kind) {
    case WidgetKind::button:
    case WidgetKind::toggle:
    case WidgetKind::lineEdit:
    case WidgetKind::comboBox:
    case WidgetKind::spinBox:
    case WidgetKind::slider:
    case WidgetKind::tabBar:
      return true;
    case WidgetKind::groupBox:
      return static_cast<const QGroupBox&>(widget).isCheckable();
    default:
      return false;
  }
}

bool hasGestureRecognizers(const QWidget& widget, WidgetKind kind) {
  switch (kind) {
    case WidgetKind::menuBar:
    case WidgetKind::menu:
    case WidgetKind::header:
    case WidgetKind::dockWidget:
    case WidgetKind::subWindow:
    case WidgetKind::subWindowControls:
      return true;
    default:
      // Item views, text editors and whatever else scrolls; and what its author has react.
      return qobject_cast<const QAbstractScrollArea*>(&widget) != nullptr ||
             hasOwnPressHandler(widget);
  }
}

ViewKind viewKindOf(const QWidget& widget, WidgetKind kind) {
  switch (kind) {
    case WidgetKind::label:
      return textOfLabel(static_cast<const QLabel&>(widget)).text.trimmed().isEmpty() &&
                     !static_cast<const QLabel&>(widget).pixmap(Qt::ReturnByValue).isNull()
                 ? ViewKind::image
                 : ViewKind::label;
    case WidgetKind::button:
      return ViewKind::button;
    case WidgetKind::toggle:
      return ViewKind::toggle;
    case WidgetKind::lineEdit:
      return ViewKind::textField;
    case WidgetKind::textEdit:
    case WidgetKind::plainTextEdit:
      return ViewKind::textView;
    case WidgetKind::slider:
      return qobject_cast<const QScrollBar*>(&widget) == nullptr ? ViewKind::slider
                                                                 : ViewKind::other;
    default:
      return ViewKind::other;
  }
}

}  // namespace tarnix::qt6
