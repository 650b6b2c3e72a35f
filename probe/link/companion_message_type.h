#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace tarnix {

/// The closed table of what may travel between probe and companion. The prefix of the raw string
/// tells the direction: "command." comes from the companion, everything else from the probe.
/// The order of the cases is the protocol's declaration order.
enum class CompanionMessageType {
  syncFull,
  eventHttpRequest,
  eventWsConnection,
  eventWsFrame,
  eventWsStatusChange,
  eventLog,
  eventEnvironmentChange,
  eventRulesChange,
  eventQAUpdate,
  eventUserDefaultsChange,
  eventKeychainChange,
  commandSwitchEnvironment,
  commandClearStore,
  commandToggleRule,
  commandAddMockRule,
  commandRemoveMockRule,
  commandAddInterceptRule,
  commandRemoveInterceptRule,
  commandReplayRequest,
  commandFireDeepLink,
  commandMarkQAPassed,
  commandMarkQAFailed,
  commandResetQAItem,
  commandFindElement,
  commandScreenText,
  responseFindElement,
  responseScreenText,
  commandRequestSnapshot,
  commandRequestScreenshot,
  responseScreenshot,
  commandScreenHTML,
  responseScreenHTML,
  commandPerfSnapshot,
  responsePerfSnapshot,
  commandAccessibilityAudit,
  responseAccessibilityAudit,
  commandGetWebViewConsole,
  responseWebViewConsole,
  commandTap,
  responseTap,
  commandSwipe,
  responseSwipe,
  commandTypeText,
  responseTypeText,
  responseSnapshot,
  commandShowOverlay,
  commandHideOverlay,
  heartbeat,
};

inline constexpr std::size_t companionMessageTypeCount = 48;

/// All cases, in declaration order.
const std::array<CompanionMessageType, companionMessageTypeCount>& allCompanionMessageTypes();

/// The string that travels.
std::string_view rawValue(CompanionMessageType type);

/// The case whose raw string equals `raw` exactly, upper and lower case told apart; none otherwise.
std::optional<CompanionMessageType> companionMessageType(std::string_view raw);

}  // namespace tarnix
