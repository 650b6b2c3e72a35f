#pragma once

#include <QPoint>

#include "platforms/qt6/widgets/widget_class.h"

namespace tarnix::qt6 {

/// What a widget makes of a press.
enum class PressReaction {
  /// Nothing: the widget around it is asked.
  passesOn,
  /// Nothing, and nobody else gets it.
  keeps,
  reacts,
};

/// What a widget makes of a press at `point`, in its own coordinates. Main thread.
PressReaction reactionOf(const QWidget& widget, WidgetKind kind, QPoint point);

/// Which widget reacts to a press that reaches `innermost`, and from there those around it up to
/// `outermost`, in whose coordinates `point` is given; null when none does. Main thread.
const QWidget* reactingTo(const QWidget& innermost, const QWidget& outermost, QPoint point);

}  // namespace tarnix::qt6
