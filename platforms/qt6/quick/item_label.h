#pragma once

#include <QString>

#include "platforms/qt6/quick/attached_properties.h"
#include "platforms/qt6/quick/item_class.h"

class QQuickItem;

namespace tarnix::qt6 {

/// What a person would call a control: its name for assistive technology, else what it shows. Empty
/// when it shows nothing. Main thread.
QString labelOf(const QQuickItem& item, const ItemClass& itemClass,
                const AttachedProperties& attached);

/// What stands in a field, as it is shown: of a password, as many bullets. Absent when the field
/// hides even that.
std::optional<QString> fieldText(const QQuickItem& item, const ItemClass& itemClass,
                                 const AttachedProperties& attached);

}  // namespace tarnix::qt6
