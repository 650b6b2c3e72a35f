#include "probe/link/companion_message_type.h"

#include <algorithm>

namespace tarnix {
namespace {

constexpr std::array<std::string_view, companionMessageTypeCount> rawValues = {
    "sync.full",
    "event.httpRequest",
    "event.wsConnection",
    "event.wsFrame",
    "event.wsStatusChange",
    "event.log",
    "event.environmentChange",
    "event.rulesChange",
    "event.qaUpdate",
    "event.userDefaultsChange",
    "event.keychainChange",
    "command.switchEnvironment",
    "command.clearStore",
    "command.toggleRule",
    "command.addMockRule",
    "command.removeMockRule",
    "command.addInterceptRule",
    "command.removeInterceptRule",
    "command.replayRequest",
    "command.fireDeepLink",
    "command.markQAPassed",
    "command.markQAFailed",
    "command.resetQAItem",
    "command.findElement",
    "command.screenText",
    "response.findElement",
    "response.screenText",
    "command.requestSnapshot",
    "command.requestScreenshot",
    "response.screenshot",
    "command.screenHTML",
    "response.screenHTML",
    "command.perfSnapshot",
    "response.perfSnapshot",
    "command.accessibilityAudit",
    "response.accessibilityAudit",
    "command.getWebViewConsole",
    "response.webViewConsole",
    "command.tap",
    "response.tap",
    "command.swipe",
    "response.swipe",
    "command.typeText",
    "response.typeText",
    "response.snapshot",
    "command.showOverlay",
    "command.hideOverlay",
    "heartbeat",
};

constexpr auto cases = [] {
  std::array<CompanionMessageType, companionMessageTypeCount> all{};
  for (std::size_t index = 0; index < all.size(); ++index) {
    all[index] = static_cast<CompanionMessageType>(index);
  }
  return all;
}();
static_assert(cases.back() == CompanionMessageType::heartbeat);

}  // namespace

const std::array<CompanionMessageType, companionMessageTypeCount>& allCompanionMessageTypes() {
  return cases;
}

std::string_view rawValue(CompanionMessageType type) {
  return rawValues[static_cast<std::size_t>(type)];
}

std::optional<CompanionMessageType> companionMessageType(std::string_view raw) {
  const auto found = std::find(rawValues.begin(), rawValues.end(), raw);
  if (found == rawValues.end()) {
    return std::nullopt;
  }
  return cases[static_cast<std::size_t>(found - rawValues.begin())];
}

}  // namespace tarnix
