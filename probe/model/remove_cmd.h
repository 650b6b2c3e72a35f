#pragma once

#include <string>
#include <tuple>

#include "probe/link/record.h"

namespace tarnix {

/// Names the rule that is to go, of whichever kind the command is about.
struct RemoveCmd {
  /// A UUID as text; any other text names nothing.
  std::string ruleId;

  static constexpr auto fields() { return std::tuple{Field{"ruleId", &RemoveCmd::ruleId}}; }
};

}  // namespace tarnix
