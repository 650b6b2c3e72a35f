#pragma once

#include <optional>
#include <string>
#include <tuple>

#include "probe/link/record.h"

namespace tarnix {

/// A line of a web page's console.
struct ConsoleEntryResponse {
  /// Seconds since 1970-01-01 00:00:00 UTC.
  double timestamp = 0;
  std::string level;
  std::string message;
  /// The page.
  std::optional<std::string> url;

  bool operator==(const ConsoleEntryResponse&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"timestamp", &ConsoleEntryResponse::timestamp},
                      Field{"level", &ConsoleEntryResponse::level},
                      Field{"message", &ConsoleEntryResponse::message},
                      Field{"url", &ConsoleEntryResponse::url}};
  }
};

}  // namespace tarnix
