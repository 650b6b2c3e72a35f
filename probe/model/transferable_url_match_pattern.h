#pragma once

#include <string>
#include <tuple>

#include "probe/link/record.h"

namespace tarnix {

/// How a rule selects URLs. The strings are opaque to the probe.
struct TransferableURLMatchPattern {
  std::string mode;
  std::string pattern;

  bool operator==(const TransferableURLMatchPattern&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"mode", &TransferableURLMatchPattern::mode},
                      Field{"pattern", &TransferableURLMatchPattern::pattern}};
  }
};

}  // namespace tarnix
