#include "platforms/qt6/widgets/widget_class.h"

#include <QWidget>
#include <array>
#include <cstring>

#include "platforms/qt6/shared/class_cache.h"
#include "platforms/qt6/shared/class_name.h"

namespace tarnix::qt6 {

namespace {

struct KnownClass {
  const char* name;
  WidgetKind kind;
};

// The class nearest to the widget's own decides. By name, since two of them are not public.
constexpr std::array knownClasses = {
    KnownClass{"QLabel", WidgetKind::label},
    KnownClass{"QAbstractButton", WidgetKind::button},
    KnownClass{"QCheckBox", WidgetKind::toggle},
    KnownClass{"QRadioButton", WidgetKind::toggle},
    KnownClass{"QLineEdit", WidgetKind::lineEdit},
    KnownClass{"QTextEdit", WidgetKind::textEdit},
    KnownClass{"QPlainTextEdit", WidgetKind::plainTextEdit},
    KnownClass{"QComboBox", WidgetKind::comboBox},
    KnownClass{"QAbstractSpinBox", WidgetKind::spinBox},
    KnownClass{"QAbstractSlider", WidgetKind::slider},
    KnownClass{"QProgressBar", WidgetKind::progressBar},
    KnownClass{"QLCDNumber", WidgetKind::lcdNumber},
    KnownClass{"QGroupBox", WidgetKind::groupBox},
    KnownClass{"QTabBar", WidgetKind::tabBar},
    KnownClass{"QMenuBar", WidgetKind::menuBar},
    KnownClass{"QMenu", WidgetKind::menu},
    KnownClass{"QStatusBar", WidgetKind::statusBar},
    KnownClass{"QDockWidget", WidgetKind::dockWidget},
    KnownClass{"QMdiSubWindow", WidgetKind::subWindow},
    KnownClass{"QMdi::ControllerWidget", WidgetKind::subWindowControls},
    KnownClass{"QHeaderView", WidgetKind::header},
    KnownClass{"QAbstractItemView", WidgetKind::itemView},
    KnownClass{"QColumnView", WidgetKind::columnView},
    KnownClass{"QScrollArea", WidgetKind::scrollArea},
    KnownClass{"QGraphicsView", WidgetKind::graphicsView},
    KnownClass{"QQuickWidget", WidgetKind::quickWidget},
    KnownClass{"QWindowContainer", WidgetKind::windowContainer},
};

WidgetKind kindOf(const QMetaObject* metaObject) {
  for (; metaObject != nullptr; metaObject = metaObject->superClass()) {
    for (const KnownClass& known : knownClasses) {
      if (std::strcmp(known.name, metaObject->className()) == 0) {
        return known.kind;
      }
    }
  }
  return WidgetKind::plain;
}

}  // namespace

WidgetClass::WidgetClass(const QMetaObject& metaObject)
    : kind(kindOf(&metaObject)), name(writtenClassName(metaObject)) {}

const WidgetClass& classOf(const QWidget& widget) {
  static ClassCache<WidgetClass>& cache = *new ClassCache<WidgetClass>;
  return cache.of(widget);
}

}  // namespace tarnix::qt6
