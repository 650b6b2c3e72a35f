#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

#include "probe/link/record.h"

namespace tarnix {

/// What "command.getWebViewConsole" carries.
struct GetConsoleCmd {
  /// Only entries of exactly this level; absent: all.
  std::optional<std::string> level;
  /// At most so many, the newest.
  std::optional<std::int64_t> limit;

  bool operator==(const GetConsoleCmd&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"level", &GetConsoleCmd::level}, Field{"limit", &GetConsoleCmd::limit}};
  }
};

}  // namespace tarnix
