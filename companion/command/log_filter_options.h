#pragma once

#include "companion/command/log_filter.h"

namespace CLI {
class App;
}

namespace tarnix::companion {

/// --level, --category and --text. `filter` outlives the parsing.
void addLogFilterOptions(CLI::App& command, LogFilter& filter);

}  // namespace tarnix::companion
