#include "probe/network/probe_mock_rules.h"

#include <utility>

#include "probe/platform/diagnostics.h"

namespace tarnix {

ProbeMockRules& ProbeMockRules::shared() {
  static ProbeMockRules& rules = *new ProbeMockRules;
  return rules;
}

void ProbeMockRules::addRule(MockRule rule) {
  const std::string line = "[TarnixProbe] Mock rule added: " + rule.httpMethod.value_or("ANY") +
                           " " + rule.urlPattern + " → " + std::to_string(rule.statusCode) + "\n";
  rules_.add(std::move(rule));
  platform::writeStandardError(line);
}

}  // namespace tarnix
