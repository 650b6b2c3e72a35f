#pragma once

#include <optional>
#include <string>
#include <vector>

#include "probe/model/transferable_network_request.h"

namespace tarnix::companion {

/// Which exchanges are shown. Each list that is not empty must have an entry that fits.
class ExchangeFilter {
 public:
  /// Statuses are a code ("404"), a class ("4xx"), a range ("200-299") or "error" for exchanges
  /// that failed without a response. Nothing when one of them is none of these.
  static std::optional<ExchangeFilter> make(std::vector<std::string> hosts,
                                            std::vector<std::string> methods,
                                            const std::vector<std::string>& statuses);

  bool fits(const TransferableNetworkRequest& exchange) const;

 private:
  struct StatusRange {
    int lowest;
    int highest;
  };

  static std::optional<StatusRange> rangeFrom(const std::string& text);

  std::vector<std::string> hosts_;
  std::vector<std::string> methods_;
  std::vector<StatusRange> statuses_;
};

}  // namespace tarnix::companion
