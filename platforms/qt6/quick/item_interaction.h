#pragma once

#include "platforms/qt6/quick/item_class.h"
#include "probe/platform/view_kind.h"

class QQuickItem;

/// What an item does with a person's touch, as far as can be told without touching it. Main thread.
namespace tarnix::qt6 {

/// Whether it reacts at all: neither disabled, nor something to look at only. `isLink` is whether
/// it is a text with a link.
bool isUserInteractionEnabled(const QQuickItem& item, const ItemClass& itemClass, bool isLink);

/// Whether it reacts to a press by itself.
bool isControl(const ItemClass& itemClass);

/// Whether people drag or press it although it is no control: a mouse area, what has pointer
/// handlers, what can be flicked.
bool hasGestureRecognizers(const QQuickItem& item, const ItemClass& itemClass);

platform::ViewKind viewKindOf(const QQuickItem& item, const ItemClass& itemClass);

}  // namespace tarnix::qt6
