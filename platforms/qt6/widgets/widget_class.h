#pragma once

#include <QMetaObject>
#include <string>

class QWidget;

namespace tarnix::qt6 {

/// What a widget is to a person, as far as its class tells.
enum class WidgetKind {
  /// Containers, and whatever is not named below.
  plain,
  label,
  button,
  /// Buttons that are on or off: check boxes and radio buttons.
  toggle,
  lineEdit,
  textEdit,
  plainTextEdit,
  comboBox,
  spinBox,
  slider,
  progressBar,
  lcdNumber,
  groupBox,
  tabBar,
  menuBar,
  menu,
  statusBar,
  dockWidget,
  subWindow,
  /// The buttons of a sub-window that fills its area.
  subWindowControls,
  header,
  itemView,
  /// An item view made of other item views.
  columnView,
  scrollArea,
  /// Shows a scene of figures.
  graphicsView,
  quickWidget,
  windowContainer,
};

/// What is known of a class of widgets.
struct WidgetClass {
  explicit WidgetClass(const QMetaObject& metaObject);

  WidgetKind kind = WidgetKind::plain;
  /// As a person wrote it.
  std::string name;
};

/// Main thread.
const WidgetClass& classOf(const QWidget& widget);

}  // namespace tarnix::qt6
