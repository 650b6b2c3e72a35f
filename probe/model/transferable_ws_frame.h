#pragma once

#include <optional>
#include <string>
#include <tuple>

#include "probe/link/bytes.h"
#include "probe/link/record.h"
#include "probe/link/timestamp.h"
#include "probe/model/uuid.h"

namespace tarnix {

/// One frame of a web-socket connection. The strings are opaque to the probe.
struct TransferableWSFrame {
  Uuid id;
  /// The `id` of the frame's connection.
  Uuid connectionId;
  Timestamp timestamp;
  std::string direction;
  std::string frameType;
  std::optional<Bytes> payload;
  std::optional<std::string> payloadString;

  bool operator==(const TransferableWSFrame&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"id", &TransferableWSFrame::id},
                      Field{"connectionId", &TransferableWSFrame::connectionId},
                      Field{"timestamp", &TransferableWSFrame::timestamp},
                      Field{"direction", &TransferableWSFrame::direction},
                      Field{"frameType", &TransferableWSFrame::frameType},
                      Field{"payload", &TransferableWSFrame::payload},
                      Field{"payloadString", &TransferableWSFrame::payloadString}};
  }
};

}  // namespace tarnix
