#pragma once

#include <optional>
#include <string>
#include <tuple>

#include "probe/link/record.h"
#include "probe/link/timestamp.h"
#include "probe/model/transferable_url_match_pattern.h"
#include "probe/model/uuid.h"

namespace tarnix {

/// An intercept rule as companions exchange it. The rules that the probe applies are records of
/// their own.
struct TransferableInterceptRule {
  Uuid id;
  std::string name;
  TransferableURLMatchPattern matchPattern;
  /// Absent: any method.
  std::optional<std::string> httpMethod;
  bool isEnabled = false;
  Timestamp createdAt;

  bool operator==(const TransferableInterceptRule&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"id", &TransferableInterceptRule::id},
                      Field{"name", &TransferableInterceptRule::name},
                      Field{"matchPattern", &TransferableInterceptRule::matchPattern},
                      Field{"httpMethod", &TransferableInterceptRule::httpMethod},
                      Field{"isEnabled", &TransferableInterceptRule::isEnabled},
                      Field{"createdAt", &TransferableInterceptRule::createdAt}};
  }
};

}  // namespace tarnix
