#include "probe/link/companion_message_type.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>

namespace tarnix::tests {
namespace {

constexpr std::array<std::pair<CompanionMessageType, std::string_view>, 48> table = {{
    {CompanionMessageType::syncFull, "sync.full"},
    {CompanionMessageType::eventHttpRequest, "event.httpRequest"},
    {CompanionMessageType::eventWsConnection, "event.wsConnection"},
    {CompanionMessageType::eventWsFrame, "event.wsFrame"},
    {CompanionMessageType::eventWsStatusChange, "event.wsStatusChange"},
    {CompanionMessageType::eventLog, "event.log"},
    {CompanionMessageType::eventEnvironmentChange, "event.environmentChange"},
    {CompanionMessageType::eventRulesChange, "event.rulesChange"},
    {CompanionMessageType::eventQAUpdate, "event.qaUpdate"},
    {CompanionMessageType::eventUserDefaultsChange, "event.userDefaultsChange"},
    {CompanionMessageType::eventKeychainChange, "event.keychainChange"},
    {CompanionMessageType::commandSwitchEnvironment, "command.switchEnvironment"},
    {CompanionMessageType::commandClearStore, "command.clearStore"},
    {CompanionMessageType::commandToggleRule, "command.toggleRule"},
    {CompanionMessageType::commandAddMockRule, "command.addMockRule"},
    {CompanionMessageType::commandRemoveMockRule, "command.removeMockRule"},
    {CompanionMessageType::commandAddInterceptRule, "command.addInterceptRule"},
    {CompanionMessageType::commandRemoveInterceptRule, "command.removeInterceptRule"},
    {CompanionMessageType::commandReplayRequest, "command.replayRequest"},
    {CompanionMessageType::commandFireDeepLink, "command.fireDeepLink"},
    {CompanionMessageType::commandMarkQAPassed, "command.markQAPassed"},
    {CompanionMessageType::commandMarkQAFailed, "command.markQAFailed"},
    {CompanionMessageType::commandResetQAItem, "command.resetQAItem"},
    {CompanionMessageType::commandFindElement, "command.findElement"},
    {CompanionMessageType::commandScreenText, "command.screenText"},
    {CompanionMessageType::responseFindElement, "response.findElement"},
    {CompanionMessageType::responseScreenText, "response.screenText"},
    {CompanionMessageType::commandRequestSnapshot, "command.requestSnapshot"},
    {CompanionMessageType::commandRequestScreenshot, "command.requestScreenshot"},
    {CompanionMessageType::responseScreenshot, "response.screenshot"},
    {CompanionMessageType::commandScreenHTML, "command.screenHTML"},
    {CompanionMessageType::responseScreenHTML, "response.screenHTML"},
    {CompanionMessageType::commandPerfSnapshot, "command.perfSnapshot"},
    {CompanionMessageType::responsePerfSnapshot, "response.perfSnapshot"},
    {CompanionMessageType::commandAccessibilityAudit, "command.accessibilityAudit"},
    {CompanionMessageType::responseAccessibilityAudit, "response.accessibilityAudit"},
    {CompanionMessageType::commandGetWebViewConsole, "command.getWebViewConsole"},
    {CompanionMessageType::responseWebViewConsole, "response.webViewConsole"},
    {CompanionMessageType::commandTap, "command.tap"},
    {CompanionMessageType::responseTap, "response.tap"},
    {CompanionMessageType::commandSwipe, "command.swipe"},
    {CompanionMessageType::responseSwipe, "response.swipe"},
    {CompanionMessageType::commandTypeText, "command.typeText"},
    {CompanionMessageType::responseTypeText, "response.typeText"},
    {CompanionMessageType::responseSnapshot, "response.snapshot"},
    {CompanionMessageType::commandShowOverlay, "command.showOverlay"},
    {CompanionMessageType::commandHideOverlay, "command.hideOverlay"},
    {CompanionMessageType::heartbeat, "heartbeat"},
}};

TEST(CompanionMessageType, HasTheseTypesInThisOrder) {
  ASSERT_EQ(allCompanionMessageTypes().size(), table.size());
  for (std::size_t row = 0; row < table.size(); ++row) {
    EXPECT_EQ(allCompanionMessageTypes()[row], table[row].first) << table[row].second;
  }
}

TEST(CompanionMessageType, TravelsAsItsRawString) {
  for (const auto& [type, raw] : table) {
    EXPECT_EQ(rawValue(type), raw);
    EXPECT_EQ(companionMessageType(raw), type) << raw;
  }
}

TEST(CompanionMessageType, IsMatchedWholeAndInItsCase) {
  for (const auto& [type, raw] : table) {
    std::string upper(raw);
    upper[0] = static_cast<char>(upper[0] - 'a' + 'A');
    EXPECT_EQ(companionMessageType(upper), std::nullopt) << upper;
    EXPECT_EQ(companionMessageType(raw.substr(1)), std::nullopt);
    EXPECT_EQ(companionMessageType(raw.substr(0, raw.size() - 1)), std::nullopt);
    EXPECT_EQ(companionMessageType(std::string(raw) + " "), std::nullopt);
  }
  EXPECT_EQ(companionMessageType(""), std::nullopt);
}

}  // namespace
}  // namespace tarnix::tests
