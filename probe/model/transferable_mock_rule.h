#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>

#include "probe/link/bytes.h"
#include "probe/link/record.h"
#include "probe/link/timestamp.h"
#include "probe/model/transferable_url_match_pattern.h"
#include "probe/model/uuid.h"

namespace tarnix {

/// A mock rule as companions exchange it. The rules that the probe applies are records of their
/// own.
struct TransferableMockRule {
  Uuid id;
  std::string name;
  TransferableURLMatchPattern matchPattern;
  /// Absent: any method.
  std::optional<std::string> httpMethod;
  std::int64_t mockStatusCode = 0;
  std::map<std::string, std::string> mockResponseHeaders;
  std::optional<Bytes> mockResponseBody;
  bool isEnabled = false;
  Timestamp createdAt;

  bool operator==(const TransferableMockRule&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"id", &TransferableMockRule::id},
                      Field{"name", &TransferableMockRule::name},
                      Field{"matchPattern", &TransferableMockRule::matchPattern},
                      Field{"httpMethod", &TransferableMockRule::httpMethod},
                      Field{"mockStatusCode", &TransferableMockRule::mockStatusCode},
                      Field{"mockResponseHeaders", &TransferableMockRule::mockResponseHeaders},
                      Field{"mockResponseBody", &TransferableMockRule::mockResponseBody},
                      Field{"isEnabled", &TransferableMockRule::isEnabled},
                      Field{"createdAt", &TransferableMockRule::createdAt}};
  }
};

}  // namespace tarnix
