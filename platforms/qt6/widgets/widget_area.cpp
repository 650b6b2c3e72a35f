#include "platforms/qt6/widgets/widget_area.h"

#include <QCheckBox>
#include <QDockWidget>
#include <QGroupBox>
#include <QMdiSubWindow>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyleOptionGroupBox>

namespace tarnix::qt6 {

namespace {

// How a widget describes itself to its style is for derived classes only.
struct OpenCheckBox : QCheckBox {
  static QStyleOptionButton option(const QCheckBox& box) {
    QStyleOptionButton result;
    (box.*&OpenCheckBox::initStyleOption)(&result);
    return result;
  }
};

struct OpenRadioButton : QRadioButton {
  static QStyleOptionButton option(const QRadioButton& button) {
    QStyleOptionButton result;
    (button.*&OpenRadioButton::initStyleOption)(&result);
    return result;
  }
};

struct OpenGroupBox : QGroupBox {
  static QStyleOptionGroupBox option(const QGroupBox& box) {
    QStyleOptionGroupBox result;
    (box.*&OpenGroupBox::initStyleOption)(&result);
    return result;
  }
};

QRectF titleOf(const QGroupBox& box) {
  const QStyleOptionGroupBox option = OpenGroupBox::option(box);
  const QStyle& style = *box.style();
  QRect title = style.subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxLabel, &box);
  if (box.isCheckable()) {
    title |= style.subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxCheckBox, &box);
  }
  return title;
}

/// The title stands above the content.
QRectF titleAbove(const QWidget& widget, const QWidget* content) {
  if (content == nullptr || content->y() <= 0) {
    return {};
  }
  return QRectF(0, 0, widget.width(), content->y());
}

QRectF orAll(const QRectF& part, const QWidget& widget) {
  return part.isEmpty() ? QRectF(widget.rect()) : part.intersected(widget.rect());
}

}  // namespace

QRectF areaOf(const QWidget& widget, WidgetKind kind) {
  if (kind == WidgetKind::toggle) {
    if (const auto* box = qobject_cast<const QCheckBox*>(&widget)) {
      const QStyleOptionButton option = OpenCheckBox::option(*box);
      return orAll(box->style()->subElementRect(QStyle::SE_CheckBoxClickRect, &option, box),
                   widget);
    }
    if (const auto* button = qobject_cast<const QRadioButton*>(&widget)) {
      const QStyleOptionButton option = OpenRadioButton::option(*button);
      return orAll(
          button->style()->subElementRect(QStyle::SE_RadioButtonClickRect, &option, button),
          widget);
    }
  }
  if (kind == WidgetKind::groupBox) {
    return orAll(titleOf(static_cast<const QGroupBox&>(widget)), widget);
  }
  if (kind == WidgetKind::dockWidget) {
    return titleAbove(widget, static_cast<const QDockWidget&>(widget).widget());
  }
  if (kind == WidgetKind::subWindow) {
    return titleAbove(widget, static_cast<const QMdiSubWindow&>(widget).widget());
  }
  return widget.rect();
}

}  // namespace tarnix::qt6
