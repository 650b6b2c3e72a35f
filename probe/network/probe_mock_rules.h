#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "probe/model/uuid.h"
#include "probe/network/rule_list.h"
#include "probe/platform/url_request.h"

namespace tarnix {

/// Which requests of the host are answered by the probe instead of the network, and with what. In
/// memory only; a rule is in force from being added to being removed. Any thread.
class ProbeMockRules {
 public:
  struct MockRule {
    Uuid id;
    std::string name;
    std::string urlPattern;
    /// How the pattern is applied, see `UrlMatcher`.
    std::string matchMode;
    std::optional<std::string> httpMethod;
    std::int64_t statusCode = 0;
    std::string responseBody;
    std::map<std::string, std::string> responseHeaders;

    bool operator==(const MockRule&) const = default;
  };

  /// The store of the process, made on first use and never destroyed.
  static ProbeMockRules& shared();

  /// Puts the rule behind all others, and says so on standard error. A second rule of the same id
  /// does not replace the first.
  void addRule(MockRule rule);

  /// Removes every rule of that id; none is fine.
  void removeRule(const Uuid& id) { rules_.remove(id); }

  /// The first rule, in the order of being added, that matches.
  std::optional<MockRule> findMatch(const platform::UrlRequest& request) const {
    return rules_.findMatch(request);
  }

 private:
  RuleList<MockRule> rules_;
};

}  // namespace tarnix
