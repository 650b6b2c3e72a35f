#pragma once

#include <cstdint>
#include <vector>

#include "probe/model/get_console_cmd.h"
#include "probe/model/web_view_console_response.h"

namespace tarnix {

/// Entries that a companion gets that does not say how many it wants.
inline constexpr std::int64_t defaultConsoleLimit = 50;

/// The answer to `command`, out of everything that was captured, oldest first. A limit below zero
/// is taken for zero.
WebViewConsoleResponse consoleSelection(std::vector<ConsoleEntryResponse> entries,
                                        const GetConsoleCmd& command);

}  // namespace tarnix
