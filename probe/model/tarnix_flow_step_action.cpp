#include "probe/model/tarnix_flow_step_action.h"

#include <array>
#include <cstddef>

namespace tarnix {
namespace {

constexpr std::array<std::string_view, 4> texts = {"tap", "swipe", "type_text", "long_press"};

}  // namespace

std::string_view StringCoding<TarnixFlowStepAction>::toString(TarnixFlowStepAction action) {
  return texts[static_cast<std::size_t>(action)];
}

std::optional<TarnixFlowStepAction> StringCoding<TarnixFlowStepAction>::fromString(
    std::string_view text) {
  for (std::size_t index = 0; index < texts.size(); ++index) {
    if (texts[index] == text) {
      return static_cast<TarnixFlowStepAction>(index);
    }
  }
  return std::nullopt;
}

}  // namespace tarnix
