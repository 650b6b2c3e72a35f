#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>

#include "probe/link/record.h"

namespace tarnix {

/// What a companion says of a new mock rule. What it leaves out gets a default.
struct AddMockCmd {
  std::string urlPattern;
  std::optional<std::string> matchMode;
  std::optional<std::string> httpMethod;
  std::optional<std::int64_t> statusCode;
  std::optional<std::string> responseBody;
  std::optional<std::map<std::string, std::string>> responseHeaders;
  std::optional<std::string> name;
  /// The identifier that the rule is to have, as text: nothing answers the command, so that only a
  /// companion that chose one can remove the rule again.
  std::optional<std::string> ruleId;

  static constexpr auto fields() {
    return std::tuple{Field{"urlPattern", &AddMockCmd::urlPattern},
                      Field{"matchMode", &AddMockCmd::matchMode},
                      Field{"httpMethod", &AddMockCmd::httpMethod},
                      Field{"statusCode", &AddMockCmd::statusCode},
                      Field{"responseBody", &AddMockCmd::responseBody},
                      Field{"responseHeaders", &AddMockCmd::responseHeaders},
                      Field{"name", &AddMockCmd::name},
                      Field{"ruleId", &AddMockCmd::ruleId}};
  }
};

}  // namespace tarnix
