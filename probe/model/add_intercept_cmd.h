#pragma once

#include <optional>
#include <string>
#include <tuple>

#include "probe/link/record.h"

namespace tarnix {

/// What a companion says of a new intercept rule. What it leaves out gets a default.
struct AddInterceptCmd {
  std::string urlPattern;
  std::optional<std::string> matchMode;
  std::optional<std::string> httpMethod;
  std::optional<std::string> name;
  /// The identifier that the rule is to have, as text: nothing answers the command, so that only a
  /// companion that chose one can remove the rule again.
  std::optional<std::string> ruleId;

  static constexpr auto fields() {
    return std::tuple{Field{"urlPattern", &AddInterceptCmd::urlPattern},
                      Field{"matchMode", &AddInterceptCmd::matchMode},
                      Field{"httpMethod", &AddInterceptCmd::httpMethod},
                      Field{"name", &AddInterceptCmd::name},
                      Field{"ruleId", &AddInterceptCmd::ruleId}};
  }
};

}  // namespace tarnix
