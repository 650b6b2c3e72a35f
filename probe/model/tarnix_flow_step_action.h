#pragma once

#include <optional>
#include <string_view>

#include "probe/link/record.h"

namespace tarnix {

/// What a step of a flow did. Travels as "tap", "swipe", "type_text" or "long_press".
enum class TarnixFlowStepAction { tap, swipe, typeText, longPress };

template <>
struct StringCoding<TarnixFlowStepAction> {
  static std::string_view toString(TarnixFlowStepAction action);
  static std::optional<TarnixFlowStepAction> fromString(std::string_view text);
};

}  // namespace tarnix
