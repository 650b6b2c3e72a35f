#include "probe/network/probe_intercept_rules.h"

#include <utility>

#include "probe/platform/diagnostics.h"

namespace tarnix {

ProbeInterceptRules& ProbeInterceptRules::shared() {
  static ProbeInterceptRules& rules = *new ProbeInterceptRules;
  return rules;
}

void ProbeInterceptRules::addRule(InterceptRule rule) {
  const std::string line =
      "[TarnixProbe] Intercept rule added: " + rule.httpMethod.value_or("ANY") + " " +
      rule.urlPattern + "\n";
  rules_.add(std::move(rule));
  platform::writeStandardError(line);
}

}  // namespace tarnix
