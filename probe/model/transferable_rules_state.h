#pragma once

#include <tuple>
#include <vector>

#include "probe/link/record.h"
#include "probe/model/transferable_intercept_rule.h"
#include "probe/model/transferable_mock_rule.h"
#include "probe/model/transferable_rewrite_rule.h"

namespace tarnix {

/// All network rules that a companion knows.
struct TransferableRulesState {
  std::vector<TransferableRewriteRule> rewriteRules;
  std::vector<TransferableMockRule> mockRules;
  std::vector<TransferableInterceptRule> interceptRules;

  bool operator==(const TransferableRulesState&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"rewriteRules", &TransferableRulesState::rewriteRules},
                      Field{"mockRules", &TransferableRulesState::mockRules},
                      Field{"interceptRules", &TransferableRulesState::interceptRules}};
  }
};

}  // namespace tarnix
