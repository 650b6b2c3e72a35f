#include "probe/commands/console_selection.h"

#include <algorithm>
#include <utility>

namespace tarnix {

WebViewConsoleResponse consoleSelection(std::vector<ConsoleEntryResponse> entries,
                                        const GetConsoleCmd& command) {
  WebViewConsoleResponse response;
  response.totalCount = static_cast<std::int64_t>(entries.size());
  if (command.level) {
    std::erase_if(entries,
                  [&](const ConsoleEntryResponse& entry) { return entry.level != *command.level; });
  }
  const std::int64_t limit = std::max<std::int64_t>(command.limit.value_or(defaultConsoleLimit), 0);
  const auto count = static_cast<std::int64_t>(entries.size());
  entries.erase(entries.begin(), entries.end() - std::min(limit, count));
  response.entries = std::move(entries);
  return response;
}

}  // namespace tarnix
