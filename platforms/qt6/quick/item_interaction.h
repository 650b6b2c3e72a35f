#pragma once

#include "platforms/qt6/quick/item_class.h"
#include "platforms/qt6/quick/item_description.h"
#include "probe/platform/touch_reactions.h"
#include "probe/platform/view_kind.h"

class QQuickItem;

/// What an item does with a person's touch, as far as can be told without touching it. Main thread.
namespace tarnix::qt6 {

/// A mouse area, what has pointer handlers and what can be flicked count as having gesture
/// recognizers. `description` is what the item says.
platform::TouchReactions touchReactionsOf(const QQuickItem& item, const ItemClass& itemClass,
                                          const ItemDescription& description);

platform::ViewKind viewKindOf(const QQuickItem& item, const ItemClass& itemClass);

}  // namespace tarnix::qt6
