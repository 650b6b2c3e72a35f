#pragma once

#include "probe/platform/property_value.h"

class QVariant;

namespace tarnix::qt6 {

/// A settings value as the core takes it.
platform::PropertyValue propertyValueOf(const QVariant& value);

}  // namespace tarnix::qt6
