#include "probe/commands/rule_commands.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "probe/model/add_intercept_cmd.h"
#include "probe/model/add_mock_cmd.h"
#include "probe/model/remove_cmd.h"
#include "probe/model/uuid.h"
#include "probe/network/probe_intercept_rules.h"
#include "probe/network/probe_mock_rules.h"
#include "probe/platform/text.h"

namespace tarnix::ProbeCommandHandler {
namespace {

constexpr const char* defaultMatchMode = "contains";
constexpr std::int64_t defaultStatusCode = 200;
constexpr const char* defaultResponseBody = "{}";

/// How much of the pattern becomes part of the name of a rule that was given none.
constexpr std::size_t patternCharactersInName = 30;

std::map<std::string, std::string> defaultResponseHeaders() {
  return {{"Content-Type", "application/json"}};
}

std::string defaultName(const char* kind, const std::string& urlPattern) {
  return std::string(kind) + " " +
         std::string(platform::firstCharacters(urlPattern, patternCharactersInName));
}

/// A random one unless the companion chose one.
Uuid idOfNewRule(const std::optional<std::string>& chosen) {
  const std::optional<Uuid> id = chosen ? Uuid::parse(*chosen) : std::nullopt;
  return id ? *id : Uuid::random();
}

std::optional<Uuid> ruleIdIn(const CompanionMessage& message) {
  const std::optional<RemoveCmd> command = message.decode<RemoveCmd>();
  return command ? Uuid::parse(command->ruleId) : std::nullopt;
}

}  // namespace

void handleAddMockRule(const CompanionMessage& message) {
  std::optional<AddMockCmd> command = message.decode<AddMockCmd>();
  if (!command) {
    return;
  }
  ProbeMockRules::MockRule rule;
  rule.id = idOfNewRule(command->ruleId);
  rule.name = command->name ? *std::move(command->name) : defaultName("Mock", command->urlPattern);
  rule.urlPattern = std::move(command->urlPattern);
  rule.matchMode = std::move(command->matchMode).value_or(defaultMatchMode);
  rule.httpMethod = std::move(command->httpMethod);
  rule.statusCode = command->statusCode.value_or(defaultStatusCode);
  rule.responseBody = std::move(command->responseBody).value_or(defaultResponseBody);
  // Headers that are there but empty stay empty.
  rule.responseHeaders =
      command->responseHeaders ? *std::move(command->responseHeaders) : defaultResponseHeaders();
  ProbeMockRules::shared().addRule(std::move(rule));
}

void handleAddInterceptRule(const CompanionMessage& message) {
  std::optional<AddInterceptCmd> command = message.decode<AddInterceptCmd>();
  if (!command) {
    return;
  }
  ProbeInterceptRules::InterceptRule rule;
  rule.id = idOfNewRule(command->ruleId);
  rule.name =
      command->name ? *std::move(command->name) : defaultName("Intercept", command->urlPattern);
  rule.urlPattern = std::move(command->urlPattern);
  rule.matchMode = std::move(command->matchMode).value_or(defaultMatchMode);
  rule.httpMethod = std::move(command->httpMethod);
  ProbeInterceptRules::shared().addRule(std::move(rule));
}

void handleRemoveMockRule(const CompanionMessage& message) {
  if (const std::optional<Uuid> id = ruleIdIn(message)) {
    ProbeMockRules::shared().removeRule(*id);
  }
}

void handleRemoveInterceptRule(const CompanionMessage& message) {
  if (const std::optional<Uuid> id = ruleIdIn(message)) {
    ProbeInterceptRules::shared().removeRule(*id);
  }
}

}  // namespace tarnix::ProbeCommandHandler
