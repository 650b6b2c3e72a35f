#pragma once

#include <optional>

#include "platforms/qt6/widgets/widget_class.h"
#include "probe/platform/accessibility_traits.h"

namespace tarnix::qt6 {

/// What a widget is to assistive technology; absent when it holds others and is no element itself.
/// Main thread.
std::optional<platform::AccessibilityTraits> traitsOf(const QWidget& widget, WidgetKind kind);

/// Whether it takes text.
bool isTextField(const QWidget& widget, WidgetKind kind);

}  // namespace tarnix::qt6
