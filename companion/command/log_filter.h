#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "probe/model/transferable_log_entry.h"

namespace tarnix::companion {

/// How bad a line of a log is.
enum class LogLevel { debug, info, warn, error };

/// The level of that name, upper and lower case alike; "warning" and "err" mean what they say.
std::optional<LogLevel> logLevel(std::string_view name);

/// Which lines of a log are shown.
struct LogFilter {
  /// This one and worse.
  LogLevel lowest = LogLevel::debug;
  /// Parts of the category and of the message, upper and lower case of ASCII letters alike.
  std::string category;
  std::string text;

  bool fits(const TransferableLogEntry& entry) const;
};

}  // namespace tarnix::companion
