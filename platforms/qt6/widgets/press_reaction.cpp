#include "platforms/qt6/widgets/press_reaction.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QCalendarWidget>
#include <QGraphicsView>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTextEdit>
#include <QTreeView>
#include <algorithm>

#include "platforms/qt6/widgets/graphics_press.h"
#include "platforms/qt6/widgets/label_link.h"
#include "platforms/qt6/widgets/own_handlers.h"
#include "platforms/qt6/widgets/title_bar_buttons.h"
#include "platforms/qt6/widgets/widget_area.h"

namespace tarnix::qt6 {

namespace {

// Where a button can be pressed is for derived classes only.
struct OpenButton : QAbstractButton {
  static bool isHit(const QAbstractButton& button, QPoint point) {
    return (button.*&OpenButton::hitButton)(point);
  }
};

constexpr PressReaction reactsIf(bool reacts) {
  return reacts ? PressReaction::reacts : PressReaction::passesOn;
}

constexpr PressReaction keepsUnless(bool reacts) {
  return reacts ? PressReaction::reacts : PressReaction::keeps;
}

bool canBeChosen(const QAction* action) {
  return action != nullptr && action->isEnabled() && !action->isSeparator();
}

PressReaction reactionOfText(Qt::TextInteractionFlags flags) {
  return keepsUnless(flags != Qt::NoTextInteraction);
}

/// The names of days and the numbers of weeks are cells of a calendar like its days, and do
/// nothing.
bool isHeaderOfCalendar(const QAbstractItemView& view, const QModelIndex& index) {
  const auto* const calendar = qobject_cast<const QCalendarWidget*>(view.parentWidget());
  return calendar != nullptr && view.inherits("QCalendarView") &&
         ((index.row() == 0 &&
           calendar->horizontalHeaderFormat() != QCalendarWidget::NoHorizontalHeader) ||
          (index.column() == 0 &&
           calendar->verticalHeaderFormat() != QCalendarWidget::NoVerticalHeader));
}

/// Whether a point of a row of a tree is where it is unfolded and folded, which goes with disabled
/// rows too.
bool unfoldsAt(const QAbstractItemView& view, const QModelIndex& index, QPoint point) {
  const auto* const tree = qobject_cast<const QTreeView*>(&view);
  return tree != nullptr && tree->itemsExpandable() && !tree->visualRect(index).contains(point) &&
         tree->model()->hasChildren(index.siblingAtColumn(0));
}

PressReaction reactionOfView(const QAbstractItemView& view, QPoint point) {
  const QPoint inViewport = view.viewport()->mapFrom(&view, point);
  const QModelIndex index = view.indexAt(inViewport);
  if (index.isValid() && !(index.flags() & Qt::ItemIsEnabled)) {
    return keepsUnless(unfoldsAt(view, index, inViewport));
  }
  return keepsUnless(index.isValid() && !isHeaderOfCalendar(view, index));
}

bool isInOneOf(const std::vector<PlainItem::Description>& buttons, QPoint point) {
  return std::any_of(buttons.begin(), buttons.end(), [point](const PlainItem::Description& button) {
    return button.area.contains(point);
  });
}

/// A press anywhere on one that lies behind brings it to the front.
PressReaction reactionOfSubWindow(const QMdiSubWindow& window, QPoint point) {
  const QMdiArea* const area = window.mdiArea();
  const bool isBehind = area != nullptr && area->activeSubWindow() != &window;
  return keepsUnless(isBehind || isInOneOf(titleBarButtons(window), point));
}

/// What takes presses by a filter on its events cannot be told from outside, but its author shows a
/// hand over it. Texts do so by themselves where the mouse has been over a link.
bool saysThatItReacts(const QWidget& widget, WidgetKind kind) {
  const auto* const area = qobject_cast<const QAbstractScrollArea*>(widget.parentWidget());
  const bool isText = (area != nullptr && area->viewport() == &widget) ||
                      (kind == WidgetKind::label &&
                       static_cast<const QLabel&>(widget).text().contains(QLatin1String("href")));
  return !isText && widget.testAttribute(Qt::WA_SetCursor) &&
         widget.cursor().shape() == Qt::PointingHandCursor;
}

PressReaction reactionOfHeader(const QHeaderView& header, QPoint point) {
  return keepsUnless(header.sectionsClickable() &&
                     header.logicalIndexAt(header.viewport()->mapFrom(&header, point)) >= 0);
}

}  // namespace

PressReaction reactionOf(const QWidget& widget, WidgetKind kind, QPoint point) {
  const bool isButton = kind == WidgetKind::button || kind == WidgetKind::toggle;
  if (!widget.isEnabled()) {
    // A disabled button is still in the way, unlike all others.
    return isButton ? PressReaction::keeps : PressReaction::passesOn;
  }
  switch (kind) {
    case WidgetKind::button:
    case WidgetKind::toggle:
      return reactsIf(OpenButton::isHit(static_cast<const QAbstractButton&>(widget), point));
    case WidgetKind::slider: {
      const auto& slider = static_cast<const QAbstractSlider&>(widget);
      return reactsIf(slider.minimum() < slider.maximum());
    }
    case WidgetKind::lineEdit:
    case WidgetKind::comboBox:
    case WidgetKind::spinBox:
      return PressReaction::reacts;
    case WidgetKind::textEdit:
      return reactionOfText(static_cast<const QTextEdit&>(widget).textInteractionFlags());
    case WidgetKind::plainTextEdit:
      return reactionOfText(static_cast<const QPlainTextEdit&>(widget).textInteractionFlags());
    case WidgetKind::groupBox:
      return reactsIf(static_cast<const QGroupBox&>(widget).isCheckable() &&
                      areaOf(widget, kind).contains(point));
    case WidgetKind::tabBar: {
      const auto& bar = static_cast<const QTabBar&>(widget);
      const int tab = bar.tabAt(point);
      return keepsUnless(tab >= 0 && bar.isTabEnabled(tab));
    }
    case WidgetKind::menuBar:
      return reactsIf(canBeChosen(static_cast<const QMenuBar&>(widget).actionAt(point)));
    case WidgetKind::menu:
      return keepsUnless(canBeChosen(static_cast<const QMenu&>(widget).actionAt(point)));
    case WidgetKind::header:
      return reactionOfHeader(static_cast<const QHeaderView&>(widget), point);
    case WidgetKind::subWindow:
      return reactionOfSubWindow(static_cast<const QMdiSubWindow&>(widget), point);
    case WidgetKind::subWindowControls:
      return keepsUnless(isInOneOf(controlButtons(widget), point));
    case WidgetKind::itemView:
      return reactionOfView(static_cast<const QAbstractItemView&>(widget), point);
    case WidgetKind::label:
      if (hasLinkAt(static_cast<const QLabel&>(widget), point)) {
        return PressReaction::reacts;
      }
      break;
    case WidgetKind::quickWidget:
      // Its items are asked before it is.
      return PressReaction::passesOn;
    case WidgetKind::windowContainer:
      return PressReaction::keeps;
    default:
      break;
  }
  if (const auto* const graphics = qobject_cast<const QGraphicsView*>(&widget)) {
    if (reactsInScene(*graphics, point)) {
      return PressReaction::reacts;
    }
  }
  return reactsIf(hasOwnPressHandler(widget) || saysThatItReacts(widget, kind));
}

const QWidget* reactingTo(const QWidget& innermost, const QWidget& outermost, QPoint point) {
  const QWidget* widget = &innermost;
  while (widget != nullptr) {
    switch (reactionOf(*widget, classOf(*widget).kind, widget->mapFrom(&outermost, point))) {
      case PressReaction::reacts:
        return widget;
      case PressReaction::keeps:
        return nullptr;
      case PressReaction::passesOn:
        break;
    }
    const bool isLast = widget == &outermost || widget->testAttribute(Qt::WA_NoMousePropagation);
    widget = isLast ? nullptr : widget->parentWidget();
  }
  return nullptr;
}

}  // namespace tarnix::qt6
