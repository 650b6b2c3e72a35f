#pragma once

#include <QString>
#include <optional>

#include "platforms/qt6/shared/visible_text.h"
#include "platforms/qt6/widgets/widget_class.h"

class QLabel;
class QWidget;

namespace tarnix::qt6 {

class Buddies;

/// What a person would call a widget: its name for assistive technology, the label beside it, or
/// what it shows. Empty when it shows nothing. Main thread.
QString labelOf(const QWidget& widget, WidgetKind kind, const Buddies* buddies);

/// What is entered, chosen, counted or checked; absent when there is no such thing. Of a password,
/// as many bullets as are shown.
std::optional<QString> valueOf(const QWidget& widget, WidgetKind kind);

/// What a label shows, without the mark of its shortcut. Empty when it shows a picture.
VisibleText textOfLabel(const QLabel& label);

}  // namespace tarnix::qt6
