#pragma once

#include "platforms/qt6/widgets/widget_class.h"
#include "probe/platform/view_kind.h"

/// What a widget does with a person's touch, as far as can be told without touching it. Main
/// thread.
namespace tarnix::qt6 {

/// Whether it reacts at all: neither disabled, nor transparent to the mouse, nor something to look
/// at only.
bool isUserInteractionEnabled(const QWidget& widget, WidgetKind kind);

/// Whether it reacts to a press by itself.
bool isControl(const QWidget& widget, WidgetKind kind);

/// Whether people scroll it or pick from it although it is no control.
bool hasGestureRecognizers(const QWidget& widget, WidgetKind kind);

platform::ViewKind viewKindOf(const QWidget& widget, WidgetKind kind);

}  // namespace tarnix::qt6
