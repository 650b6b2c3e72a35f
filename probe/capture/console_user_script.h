#pragma once

#include <string_view>

namespace tarnix {

/// The message handler that the script posts to.
inline constexpr std::string_view consoleMessageHandlerName = "tarnixConsole";

/// The script that runs in every frame of every page before the page's own, and wraps its console.
extern const std::string_view consoleUserScript;

}  // namespace tarnix
