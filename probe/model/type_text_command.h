#pragma once

#include <string>
#include <tuple>

#include "probe/link/record.h"

namespace tarnix {

/// What "command.typeText" carries: text for whatever has the focus.
struct TypeTextCommand {
  std::string text;

  bool operator==(const TypeTextCommand&) const = default;

  static constexpr auto fields() { return std::tuple{Field{"text", &TypeTextCommand::text}}; }
};

}  // namespace tarnix
