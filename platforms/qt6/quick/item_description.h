#pragma once

#include <QString>
#include <optional>

#include "platforms/qt6/quick/item_class.h"
#include "platforms/qt6/shared/surroundings.h"
#include "probe/platform/accessibility_traits.h"

class QQuickItem;

namespace tarnix::qt6 {

/// What an item says to assistive technology, whether or not the toolkit's own accessibility is on:
/// that would slow the host down and leaves most names empty.
struct ItemDescription {
  bool isElement = false;
  bool isTextField = false;
  bool isEnabled = false;
  /// False once no object was found that belongs to it and is neither an item nor known to say
  /// something of it: pointer handlers are such objects.
  bool mayHaveHandlers = true;
  QString label;
  platform::AccessibilityTraits traits = platform::accessibility_traits::none;
  std::optional<QString> value;
};

/// `parent` is the class of the item around; null for the outermost one. Main thread.
/// `spoken` is what the elements around say.
ItemDescription describe(const QQuickItem& item, const ItemClass& itemClass,
                         const ItemClass* parent, const Surroundings& surroundings,
                         const SpokenText* spoken);

/// Main thread.
const ItemClass& classOf(const QQuickItem& item);

}  // namespace tarnix::qt6
