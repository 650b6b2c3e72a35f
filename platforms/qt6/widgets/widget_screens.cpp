#include "platforms/qt6/widgets/widget_screens.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStackedLayout>
#include <QStackedWidget>
#include <QToolBox>
#include <QWidget>
#include <QWindow>
#include <QWizard>

#include "platforms/qt6/shared/class_origin.h"
#include "platforms/qt6/shared/plain_controller.h"
#include "platforms/qt6/widgets/embedded_scene.h"
#include "platforms/qt6/widgets/widget_class.h"
#include "platforms/qt6/widgets/widgets_part.h"

namespace tarnix::qt6 {

namespace {

// The main thread is held no longer than for these.
constexpr int mostWidgets = 4'000;
constexpr int deepest = 200;

/// The page on view where `widget` has pages; null where it has none.
QWidget* currentPage(const QWidget& widget) {
  if (const auto* const stack = qobject_cast<const QStackedWidget*>(&widget)) {
    return stack->currentWidget();
  }
  if (const auto* const wizard = qobject_cast<const QWizard*>(&widget)) {
    return wizard->currentPage();
  }
  if (const auto* const box = qobject_cast<const QToolBox*>(&widget)) {
    return box->currentWidget();
  }
  if (const auto* const area = qobject_cast<const QMdiArea*>(&widget)) {
    const QMdiSubWindow* const window = area->currentSubWindow();
    return window == nullptr ? nullptr : window->widget();
  }
  const auto* const stack = qobject_cast<const QStackedLayout*>(widget.layout());
  return stack == nullptr || stack->stackingMode() != QStackedLayout::StackOne
             ? nullptr
             : stack->currentWidget();
}

/// One look into a window for the pages that are on view in it.
class Search {
 public:
  Search(ScreenFinder& finder, ViewSource& source, const QWidget& window, ScreenChain& chain)
      : finder_(finder),
        source_(source),
        chain_(chain),
        area_(double{1} * window.width() * window.height()) {}

  void add(QWidget& widget, bool isCertain) {
    chain_.push_back({&widget, &finder_, {}, isCertain, isToolkitClass(widget)});
  }

  /// Returns whether there was one.
  bool lookInto(const QWidget& widget, int depth) {
    if (depth > deepest) {
      return false;
    }
    const WidgetKind kind = classOf(widget).kind;
    if (showsWindow(kind)) {
      QWindow* const window = embeddedWindow(widget, kind);
      return window != nullptr && source_.addScreens(*window, chain_);
    }
    if (QWidget* const page = currentPage(widget)) {
      if (!page->isVisible() || coverage(widget) < smallestPage) {
        return false;
      }
      add(*page, true);
      lookInto(*page, depth + 1);
      return true;
    }
    const QObjectList& children = widget.children();
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
      if (--budget_ < 0) {
        return false;
      }
      if ((*child)->isWidgetType() && lookAt(*static_cast<QWidget*>(*child), depth + 1)) {
        return true;
      }
    }
    return false;
  }

 private:
  double coverage(const QWidget& widget) const {
    return area_ <= 0 ? 0 : double{1} * widget.width() * widget.height() / area_;
  }

  bool lookAt(QWidget& widget, int depth) {
    const double covered = coverage(widget);
    if (widget.isWindow() || !widget.isVisible() || covered < smallestPage) {
      return false;
    }
    const bool isCandidate = covered >= mostOfWindow && !isToolkitClass(widget);
    if (isCandidate) {
      add(widget, false);
    }
    return lookInto(widget, depth) || isCandidate;
  }

  ScreenFinder& finder_;
  ViewSource& source_;
  ScreenChain& chain_;
  const double area_;
  int budget_ = mostWidgets;
};

}  // namespace

bool WidgetScreens::addScreens(QWindow& window, ScreenChain& chain) {
  QWidget* const widget = WidgetsPart::widgetOf(window);
  if (widget == nullptr) {
    return false;
  }
  Search search(*this, source_, *widget, chain);
  search.add(*widget, true);
  search.lookInto(*widget, 0);
  return true;
}

std::unique_ptr<platform::ViewController> WidgetScreens::controllerOf(QObject& object) {
  return std::make_unique<PlainController>(object);
}

}  // namespace tarnix::qt6
