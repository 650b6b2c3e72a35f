#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "probe/link/record.h"
#include "probe/link/timestamp.h"
#include "probe/model/transferable_ws_frame.h"
#include "probe/model/uuid.h"

namespace tarnix {

/// One web-socket connection. The probe sends none yet; the full sync has a place for them.
struct TransferableWSConnection {
  Uuid id;
  std::string url;
  std::string host;
  Timestamp startTime;
  std::string status;
  std::vector<TransferableWSFrame> frames;
  std::optional<std::int64_t> closeCode;
  std::optional<std::string> closeReason;

  bool operator==(const TransferableWSConnection&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"id", &TransferableWSConnection::id},
                      Field{"url", &TransferableWSConnection::url},
                      Field{"host", &TransferableWSConnection::host},
                      Field{"startTime", &TransferableWSConnection::startTime},
                      Field{"status", &TransferableWSConnection::status},
                      Field{"frames", &TransferableWSConnection::frames},
                      Field{"closeCode", &TransferableWSConnection::closeCode},
                      Field{"closeReason", &TransferableWSConnection::closeReason}};
  }
};

}  // namespace tarnix
