#include "platforms/qt6/widgets/widgets_part.h"

#include <QApplication>
#include <QWindow>

#include "platforms/qt6/widgets/picture_watch.h"
#include "platforms/qt6/widgets/widget_image.h"
#include "platforms/qt6/widgets/widget_pane.h"
#include "platforms/qt6/widgets/widget_touch.h"
#include "platforms/qt6/widgets/widget_view.h"

namespace tarnix::qt6 {

WidgetsPart::WidgetsPart(ViewSource& source) : source_(source), screens_(source) {
  if (InterposedCalls* const calls = source.interposedCalls()) {
    PictureWatch::shared().start(*calls);
  }
}

QWidget* WidgetsPart::widgetOf(const QWindow& window) {
  // Applications with the library loaded need not have made an application object of its kind.
  if (!window.inherits("QWidgetWindow") ||
      qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr) {
    return nullptr;
  }
  // Those that are on the screen are known by the number of their window.
  if (window.handle() != nullptr) {
    QWidget* const widget = QWidget::find(window.winId());
    if (widget != nullptr && widget->windowHandle() == &window) {
      return widget;
    }
  }
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (widget->windowHandle() == &window) {
      return widget;
    }
  }
  return nullptr;
}

std::shared_ptr<platform::View> WidgetsPart::viewOf(QWindow& window,
                                                    const Surroundings& surroundings) {
  QWidget* const widget = widgetOf(window);
  if (widget == nullptr) {
    return nullptr;
  }
  return std::make_shared<WidgetView>(*widget, surroundings.origin,
                                      std::make_shared<const Surroundings>(surroundings), nullptr,
                                      source_);
}

QImage WidgetsPart::lastImage(QWindow& window) {
  QWidget* const widget = widgetOf(window);
  return widget == nullptr ? QImage() : lastImageOf(*widget, source_);
}

std::shared_ptr<platform::View> WidgetsPart::touchedView(QWindow& window,
                                                         const Surroundings& surroundings,
                                                         QPointF point,
                                                         std::shared_ptr<platform::View>) {
  QWidget* const widget = widgetOf(window);
  return widget == nullptr ? nullptr : qt6::touchedView(*widget, surroundings, point, source_);
}

std::unique_ptr<OverlayPane> WidgetsPart::makeOverlayPane(QWindow& window) {
  QWidget* const widget = widgetOf(window);
  return widget == nullptr || !PictureWatch::shared().hasStarted()
             ? nullptr
             : std::make_unique<WidgetPane>(*widget);
}

}  // namespace tarnix::qt6
