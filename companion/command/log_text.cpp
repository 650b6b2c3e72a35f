#include "companion/command/log_text.h"

#include <fmt/format.h>

#include "companion/command/log_filter.h"
#include "companion/output/display_text.h"
#include "companion/output/time_of_day.h"

namespace tarnix::companion {

std::string logLine(const TransferableLogEntry& entry, const Terminal& terminal) {
  const std::string text =
      fmt::format("{}  {:<5}  {}: {}", timeOfDay(entry.timestamp), printable(entry.level),
                  printable(entry.category), printable(entry.message));
  switch (logLevel(entry.level).value_or(LogLevel::info)) {
    case LogLevel::debug:
      return terminal.styled(text, Style::quiet) + "\n";
    case LogLevel::warn:
      return terminal.styled(text, Style::warning) + "\n";
    case LogLevel::error:
      return terminal.styled(text, Style::failure) + "\n";
    case LogLevel::info:
      break;
  }
  return text + "\n";
}

}  // namespace tarnix::companion
