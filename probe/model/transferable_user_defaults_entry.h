#pragma once

#include <string>
#include <tuple>

#include "probe/link/record.h"

namespace tarnix {

/// One key of the host's default settings.
struct TransferableUserDefaultsEntry {
  /// Equal to `key`.
  std::string id;
  std::string key;
  /// For people; long values are cut.
  std::string displayValue;
  /// One of String, Bool, Int, Double, Data, Date, Array, Dict and ?.
  std::string valueType;

  bool operator==(const TransferableUserDefaultsEntry&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"id", &TransferableUserDefaultsEntry::id},
                      Field{"key", &TransferableUserDefaultsEntry::key},
                      Field{"displayValue", &TransferableUserDefaultsEntry::displayValue},
                      Field{"valueType", &TransferableUserDefaultsEntry::valueType}};
  }
};

}  // namespace tarnix
