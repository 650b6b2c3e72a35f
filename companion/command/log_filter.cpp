#include "companion/command/log_filter.h"

#include <algorithm>
#include <array>
#include <utility>

#include "companion/client/letter_case.h"

namespace tarnix::companion {
namespace {

constexpr std::array<std::pair<std::string_view, LogLevel>, 6> names = {
    {{"debug", LogLevel::debug},
     {"info", LogLevel::info},
     {"warn", LogLevel::warn},
     {"warning", LogLevel::warn},
     {"error", LogLevel::error},
     {"err", LogLevel::error}}};

}  // namespace

std::optional<LogLevel> logLevel(std::string_view name) {
  const auto found = std::find_if(names.begin(), names.end(), [name](const auto& known) {
    return std::equal(name.begin(), name.end(), known.first.begin(), known.first.end(),
                      isSameLetter);
  });
  return found == names.end() ? std::nullopt : std::optional(found->second);
}

bool LogFilter::fits(const TransferableLogEntry& entry) const {
  return logLevel(entry.level).value_or(LogLevel::debug) >= lowest &&
         containsInAnyCase(entry.category, category) && containsInAnyCase(entry.message, text);
}

}  // namespace tarnix::companion
