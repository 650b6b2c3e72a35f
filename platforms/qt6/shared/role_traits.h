#pragma once

#include <QAccessible>
#include <optional>

#include "probe/platform/accessibility_traits.h"

namespace tarnix::qt6 {

/// What an accessible role that an application gave to a thing of its own makes of it. Absent when
/// things of this role hold other elements and are none themselves.
std::optional<platform::AccessibilityTraits> traitsOfRole(QAccessible::Role role);

/// Whether things of this role are on or off.
bool isCheckableRole(QAccessible::Role role);

}  // namespace tarnix::qt6
