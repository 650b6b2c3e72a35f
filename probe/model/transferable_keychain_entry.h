#pragma once

#include <optional>
#include <string>
#include <tuple>

#include "probe/link/record.h"
#include "probe/link/timestamp.h"

namespace tarnix {

/// One item of a secret store, without its secret. The probe sends none yet; the full sync has a
/// place for them.
struct TransferableKeychainEntry {
  std::string id;
  std::string itemClass;
  std::string service;
  std::string account;
  std::optional<std::string> accessGroup;
  std::optional<Timestamp> createdAt;
  std::optional<Timestamp> modifiedAt;
  std::optional<std::string> label;

  bool operator==(const TransferableKeychainEntry&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"id", &TransferableKeychainEntry::id},
                      Field{"itemClass", &TransferableKeychainEntry::itemClass},
                      Field{"service", &TransferableKeychainEntry::service},
                      Field{"account", &TransferableKeychainEntry::account},
                      Field{"accessGroup", &TransferableKeychainEntry::accessGroup},
                      Field{"createdAt", &TransferableKeychainEntry::createdAt},
                      Field{"modifiedAt", &TransferableKeychainEntry::modifiedAt},
                      Field{"label", &TransferableKeychainEntry::label}};
  }
};

}  // namespace tarnix
