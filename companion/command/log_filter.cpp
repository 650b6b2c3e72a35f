#include "companion/command/log_filter.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tarnix::companion {
namespace {

constexpr std::array<std::pair<std::string_view, LogLevel>, 6> names = {
    {{"debug", LogLevel::debug},
     {"info", LogLevel::info},
     {"warn", LogLevel::warn},
     {"warning", LogLevel::warn},
     {"error", LogLevel::error},
     {"err", LogLevel::error}}};

char lowerCase(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool isSameLetter(char one, char other) { return lowerCase(one) == lowerCase(other); }

bool contains(std::string_view text, std::string_view part) {
  return std::search(text.begin(), text.end(), part.begin(), part.end(), isSameLetter) !=
             text.end() ||
         part.empty();
}

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
         contains(entry.category, category) && contains(entry.message, text);
}

}  // namespace tarnix::companion
