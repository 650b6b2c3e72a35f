#pragma once

#include <optional>
#include <string>
#include <tuple>

#include "probe/link/record.h"

namespace tarnix {

/// What "command.findElement" carries.
struct FindCommand {
  std::string text;
  /// Whether the whole label has to be `text`; absent: a part of it is enough.
  std::optional<bool> exact;

  bool operator==(const FindCommand&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"text", &FindCommand::text}, Field{"exact", &FindCommand::exact}};
  }
};

}  // namespace tarnix
