#include "probe/commands/probe_command_handler.h"

#include <array>
#include <cstddef>

#include "probe/commands/deep_link_command.h"
#include "probe/commands/input_commands.h"
#include "probe/commands/overlay_commands.h"
#include "probe/commands/perf_snapshot_command.h"
#include "probe/commands/rule_commands.h"
#include "probe/commands/screen_html_command.h"
#include "probe/commands/screen_query_commands.h"
#include "probe/model/probe_state.h"
#include "probe/platform/main_thread.h"

namespace tarnix::ProbeCommandHandler {
namespace {

using Handler = void (*)(const CompanionMessage&);

struct Route {
  CompanionMessageType type;
  /// Null for what is accepted without effect, line or answer: what only the probe sends, and
  /// commands that other members of the family carry out.
  Handler handler;
};

constexpr Route handledBy(CompanionMessageType type, Handler handler) { return {type, handler}; }
constexpr Route ignored(CompanionMessageType type) { return {type, nullptr}; }

void clearStore(const CompanionMessage&) { ProbeState::shared().clear(); }
void hideOverlay(const CompanionMessage&) { handleHideOverlay(); }
void perfSnapshot(const CompanionMessage&) { handlePerfSnapshot(); }
void screenHTML(const CompanionMessage&) { handleScreenHTML(); }
void screenText(const CompanionMessage&) { handleScreenText(); }
void snapshot(const CompanionMessage&) { handleSnapshot(); }
void screenshot(const CompanionMessage&) { handleScreenshot(); }
void accessibilityAudit(const CompanionMessage&) { handleAccessibilityAudit(); }

// One row for each message type, in the order of the types.
constexpr std::array<Route, companionMessageTypeCount> routes = {
    ignored(CompanionMessageType::syncFull),
    ignored(CompanionMessageType::eventHttpRequest),
    ignored(CompanionMessageType::eventWsConnection),
    ignored(CompanionMessageType::eventWsFrame),
    ignored(CompanionMessageType::eventWsStatusChange),
    ignored(CompanionMessageType::eventLog),
    ignored(CompanionMessageType::eventEnvironmentChange),
    ignored(CompanionMessageType::eventRulesChange),
    ignored(CompanionMessageType::eventQAUpdate),
    ignored(CompanionMessageType::eventUserDefaultsChange),
    ignored(CompanionMessageType::eventKeychainChange),
    ignored(CompanionMessageType::commandSwitchEnvironment),
    handledBy(CompanionMessageType::commandClearStore, clearStore),
    ignored(CompanionMessageType::commandToggleRule),
    handledBy(CompanionMessageType::commandAddMockRule, handleAddMockRule),
    handledBy(CompanionMessageType::commandRemoveMockRule, handleRemoveMockRule),
    handledBy(CompanionMessageType::commandAddInterceptRule, handleAddInterceptRule),
    handledBy(CompanionMessageType::commandRemoveInterceptRule, handleRemoveInterceptRule),
    ignored(CompanionMessageType::commandReplayRequest),
    handledBy(CompanionMessageType::commandFireDeepLink, handleFireDeepLink),
    ignored(CompanionMessageType::commandMarkQAPassed),
    ignored(CompanionMessageType::commandMarkQAFailed),
    ignored(CompanionMessageType::commandResetQAItem),
    handledBy(CompanionMessageType::commandFindElement, handleFindElement),
    handledBy(CompanionMessageType::commandScreenText, screenText),
    ignored(CompanionMessageType::responseFindElement),
    ignored(CompanionMessageType::responseScreenText),
    handledBy(CompanionMessageType::commandRequestSnapshot, snapshot),
    handledBy(CompanionMessageType::commandRequestScreenshot, screenshot),
    ignored(CompanionMessageType::responseScreenshot),
    handledBy(CompanionMessageType::commandScreenHTML, screenHTML),
    ignored(CompanionMessageType::responseScreenHTML),
    handledBy(CompanionMessageType::commandPerfSnapshot, perfSnapshot),
    ignored(CompanionMessageType::responsePerfSnapshot),
    handledBy(CompanionMessageType::commandAccessibilityAudit, accessibilityAudit),
    ignored(CompanionMessageType::responseAccessibilityAudit),
    handledBy(CompanionMessageType::commandGetWebViewConsole, handleGetWebViewConsole),
    ignored(CompanionMessageType::responseWebViewConsole),
    handledBy(CompanionMessageType::commandTap, handleTap),
    ignored(CompanionMessageType::responseTap),
    handledBy(CompanionMessageType::commandSwipe, handleSwipe),
    ignored(CompanionMessageType::responseSwipe),
    handledBy(CompanionMessageType::commandTypeText, handleTypeText),
    ignored(CompanionMessageType::responseTypeText),
    ignored(CompanionMessageType::responseSnapshot),
    handledBy(CompanionMessageType::commandShowOverlay, handleShowOverlay),
    handledBy(CompanionMessageType::commandHideOverlay, hideOverlay),
    ignored(CompanionMessageType::heartbeat),
};

constexpr bool rowsStandInOrder() {
  for (std::size_t row = 0; row < routes.size(); ++row) {
    if (static_cast<std::size_t>(routes[row].type) != row) {
      return false;
    }
  }
  return true;
}
static_assert(rowsStandInOrder());

}  // namespace

void handle(const CompanionMessage& message) noexcept {
  platform::assertMainThread();
  const Route& route = routes[static_cast<std::size_t>(message.type)];
  if (route.handler == nullptr) {
    return;
  }
  try {
    route.handler(message);
  } catch (...) {
    // A command that ran out of memory has no answer; the host goes on.
  }
}

}  // namespace tarnix::ProbeCommandHandler
