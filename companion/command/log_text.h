#pragma once

#include <string>

#include "companion/output/terminal.h"
#include "probe/model/transferable_log_entry.h"

namespace tarnix::companion {

/// One line for people, with its line feed: time, level, category and message, coloured by level.
std::string logLine(const TransferableLogEntry& entry, const Terminal& terminal);

}  // namespace tarnix::companion
