#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

#include "probe/link/record.h"
#include "probe/link/timestamp.h"
#include "probe/model/uuid.h"

namespace tarnix {

/// One line that the host wrote to standard error.
struct TransferableLogEntry {
  Uuid id;
  /// When the line was captured.
  Timestamp timestamp;
  /// One of DEBUG, INFO, WARN, ERROR.
  std::string level;
  std::string category;
  std::string message;
  /// Source file that the line names, or empty.
  std::string file;
  /// Source line, 0 when unknown.
  std::uint64_t line = 0;
  /// The screen on view when the line was captured.
  std::optional<std::string> screenName;

  bool operator==(const TransferableLogEntry&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"id", &TransferableLogEntry::id},
                      Field{"timestamp", &TransferableLogEntry::timestamp},
                      Field{"level", &TransferableLogEntry::level},
                      Field{"category", &TransferableLogEntry::category},
                      Field{"message", &TransferableLogEntry::message},
                      Field{"file", &TransferableLogEntry::file},
                      Field{"line", &TransferableLogEntry::line},
                      Field{"screenName", &TransferableLogEntry::screenName}};
  }
};

}  // namespace tarnix
