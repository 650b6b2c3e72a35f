#pragma once

#include <string>
#include <tuple>

#include "probe/link/record.h"

namespace tarnix {

/// What "command.fireDeepLink" carries.
struct FireDeepLinkCommand {
  std::string url;

  bool operator==(const FireDeepLinkCommand&) const = default;

  static constexpr auto fields() { return std::tuple{Field{"url", &FireDeepLinkCommand::url}}; }
};

}  // namespace tarnix
