#include "platforms/qt6/widgets/embedded_scene.h"

#include <dlfcn.h>

#include <QAccessible>
#include <QAccessibleInterface>
#include <QWidget>
#include <QWindow>

namespace tarnix::qt6 {

namespace {

// QQuickWidget::quickWindow() const. Looked up, since linking its library would bring it, and Quick
// with it, into every host that has widgets. The result type derives from QWindow first.
using QuickWindowOf = QWindow* (*)(const void* quickWidget);

QuickWindowOf findQuickWindowOf() {
  void* const library = dlopen("libQt6QuickWidgets.so.6", RTLD_LAZY | RTLD_NOLOAD);
  if (library == nullptr) {
    return nullptr;
  }
  void* const symbol = dlsym(library, "_ZNK12QQuickWidget11quickWindowEv");
  dlclose(library);
  return reinterpret_cast<QuickWindowOf>(symbol);
}

QWindow* sceneOf(const QWidget& quickWidget) {
  // Only ever asked about such a widget, so that its library is there.
  static const QuickWindowOf quickWindowOf = findQuickWindowOf();
  return quickWindowOf == nullptr ? nullptr : quickWindowOf(&quickWidget);
}

QWindow* containedWindow(const QWidget& container) {
  // The container tells nobody but assistive technology.
  const QAccessibleInterface* const interface =
      QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&container));
  const QAccessibleInterface* const content =
      interface != nullptr && interface->childCount() == 1 ? interface->child(0) : nullptr;
  return content == nullptr ? nullptr : qobject_cast<QWindow*>(content->object());
}

}  // namespace

bool showsWindow(WidgetKind kind) {
  return kind == WidgetKind::quickWidget || kind == WidgetKind::windowContainer;
}

QWindow* embeddedWindow(const QWidget& widget, WidgetKind kind) {
  switch (kind) {
    case WidgetKind::quickWidget:
      return sceneOf(widget);
    case WidgetKind::windowContainer:
      return containedWindow(widget);
    default:
      return nullptr;
  }
}

}  // namespace tarnix::qt6
