#include "platforms/qt6/widgets/widget_responder.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QComboBox>
#include <QGraphicsView>
#include <QKeySequenceEdit>
#include <QWindow>

#include "platforms/qt6/shared/finger.h"
#include "platforms/qt6/shared/keyboard.h"
#include "platforms/qt6/shared/modality.h"
#include "platforms/qt6/widgets/graphics_press.h"
#include "platforms/qt6/widgets/own_handlers.h"
#include "platforms/qt6/widgets/press_reaction.h"
#include "platforms/qt6/widgets/widget_scrolling.h"

namespace tarnix::qt6 {

namespace {

QWindow* windowOf(const QWidget* widget) {
  return widget == nullptr ? nullptr : widget->window()->windowHandle();
}

/// Whether a key that is pressed while `widget` has the focus is taken by it or a widget around it.
bool takesKeys(const QWidget& widget) {
  // These look for what is typed among their rows, or take keys for what they are.
  if (qobject_cast<const QAbstractItemView*>(&widget) != nullptr ||
      qobject_cast<const QComboBox*>(&widget) != nullptr ||
      qobject_cast<const QKeySequenceEdit*>(&widget) != nullptr) {
    return true;
  }
  const auto* const graphics = qobject_cast<const QGraphicsView*>(&widget);
  if (graphics != nullptr && takesKeysInScene(*graphics)) {
    return true;
  }
  for (const QWidget* taker = &widget; taker != nullptr;
       taker = taker->isWindow() ? nullptr : taker->parentWidget()) {
    if (hasOwnKeyHandler(*taker)) {
      return true;
    }
  }
  return false;
}

/// A popup with a field of its own gets what is typed while it is open, whichever window has the
/// focus. Lists of suggestions have none: they leave it to the field that they belong to.
const QWidget* fieldOfPopup() {
  const QWidget* const popup = QApplication::activePopupWidget();
  QWidget* const focused = popup == nullptr ? nullptr : popup->focusWidget();
  return focused != nullptr && focused->isVisible() &&
                 qobject_cast<const QAbstractItemView*>(focused) == nullptr &&
                 keyboard::editsText(*focused)
             ? focused
             : nullptr;
}

/// Some look for what lies under the mouse when it moves, and press that.
bool followsMouse(const QWidget& widget) {
  return widget.hasMouseTracking() && hasOwnMoveHandler(widget);
}

}  // namespace

WidgetResponder::WidgetResponder(QWidget& widget, WidgetKind kind, QPoint point,
                                 std::optional<bool> reacts)
    : WidgetResponder(widget, kind, point, reacts, widget, point) {}

WidgetResponder::WidgetResponder(QWidget& widget, WidgetKind kind, QPoint point,
                                 std::optional<bool> reacts, QWidget& shownBy, QPoint pointThere)
    : widget_(&widget),
      kind_(kind),
      point_(point),
      shownBy_(&shownBy),
      pointThere_(pointThere),
      reacts_(reacts) {
  text_.widget = &widget;
  keys_.widget = &widget;
}

bool WidgetResponder::isUserInteractionEnabled() const {
  const QWindow* const window = windowOf(shownBy_);
  return widget_ != nullptr && widget_->isEnabled() && window != nullptr &&
         !isBlockedByModal(*window);
}

bool WidgetResponder::isFirstResponder() const {
  if (widget_ == nullptr || !widget_->isVisible()) {
    return false;
  }
  if (const QWidget* const field = fieldOfPopup()) {
    return field == widget_;
  }
  const QWidget* const focused = widget_->window()->focusWidget();
  if (focused != nullptr) {
    return focused == widget_;
  }
  // Keys go to the window itself then; most do nothing with them.
  return widget_->isWindow() && hasOwnKeyHandler(*widget_);
}

platform::Control* WidgetResponder::asControl() {
  if (!isUserInteractionEnabled()) {
    return nullptr;
  }
  const bool reacts =
      reacts_ ? *reacts_ : reactionOf(*widget_, kind_, point_) == PressReaction::reacts;
  return reacts ? this : nullptr;
}

platform::ScrollView* WidgetResponder::asScrollView() {
  const auto* const area = qobject_cast<const QAbstractScrollArea*>(widget_.data());
  return area != nullptr && isUserInteractionEnabled() && widget_scrolling::canScroll(*area)
             ? this
             : nullptr;
}

platform::TextInput* WidgetResponder::asTextInput() {
  // Item views say that they edit text when the row they stand on could be edited.
  if (!isUserInteractionEnabled() || kind_ == WidgetKind::itemView) {
    return nullptr;
  }
  auto* const graphics = qobject_cast<QGraphicsView*>(widget_.data());
  QWidget* const target = graphics == nullptr ? widget_.data() : typedIntoInScene(*graphics);
  if (target == nullptr || !target->isEnabled() || !keyboard::editsText(*target)) {
    return nullptr;
  }
  text_.widget = target;
  return &text_;
}

platform::KeyInput* WidgetResponder::asKeyInput() {
  return isUserInteractionEnabled() && takesKeys(*widget_) ? &keys_ : nullptr;
}

void WidgetResponder::sendTouchUpInside() {
  const QPointer<QWindow> window = windowOf(shownBy_);
  if (window == nullptr) {
    return;
  }
  const QPoint point = shownBy_->mapTo(shownBy_->window(), pointThere_);
  if (followsMouse(*widget_)) {
    finger::approach(*window, point);
  }
  if (window != nullptr) {
    finger::tap(*window, point);
  }
}

platform::Point WidgetResponder::contentOffset() const {
  const auto* const area = qobject_cast<const QAbstractScrollArea*>(widget_.data());
  const QPointF offset = area == nullptr ? QPointF() : widget_scrolling::offset(*area);
  return {offset.x(), offset.y()};
}

void WidgetResponder::setContentOffsetAnimated(platform::Point offset) {
  if (auto* const area = qobject_cast<QAbstractScrollArea*>(widget_.data())) {
    widget_scrolling::scrollTo(*area, {offset.x, offset.y});
  }
}

void WidgetResponder::Text::insertText(std::string_view text) {
  if (widget != nullptr && !text.empty()) {
    keyboard::commit(*widget, text);
  }
}

void WidgetResponder::Keys::insertText(std::string_view character) {
  if (QWindow* const window = windowOf(widget)) {
    keyboard::typeCharacter(*window, character);
  }
}

}  // namespace tarnix::qt6
