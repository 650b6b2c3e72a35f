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

}  // namespace tarnix::qt6
