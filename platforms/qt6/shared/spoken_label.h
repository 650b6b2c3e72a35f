#pragma once

#include <QString>

#include "probe/platform/accessibility_traits.h"

namespace tarnix::qt6 {

/// `text` with a space for each line break and tab: what is read of an element stands on one line.
QString withoutLineBreaks(QString text);

/// `label` without line breaks and tabs, and without blanks at its ends unless it is nothing else.
QString inOneLine(QString label);

/// Whether an element of these traits is one with this label. A button or a picture whose author
/// gave it a blank name is: that is a mistake to be found. A text of blanks is but a gap.
bool saysSomething(const QString& label, platform::AccessibilityTraits traits);

}  // namespace tarnix::qt6
