#pragma once

#include <cstdint>
#include <tuple>
#include <vector>

#include "probe/link/record.h"
#include "probe/model/console_entry_response.h"

namespace tarnix {

/// What "response.webViewConsole" carries.
struct WebViewConsoleResponse {
  /// Oldest first.
  std::vector<ConsoleEntryResponse> entries;
  /// Entries that there are, before any were left out.
  std::int64_t totalCount = 0;

  bool operator==(const WebViewConsoleResponse&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"entries", &WebViewConsoleResponse::entries},
                      Field{"totalCount", &WebViewConsoleResponse::totalCount}};
  }
};

}  // namespace tarnix
