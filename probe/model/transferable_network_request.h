#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>

#include "probe/link/bytes.h"
#include "probe/link/record.h"
#include "probe/link/timestamp.h"
#include "probe/model/uuid.h"

namespace tarnix {

/// One HTTP exchange of the host.
struct TransferableNetworkRequest {
  Uuid id;
  /// When the request started.
  Timestamp timestamp;
  /// As sent, whole.
  std::string url;
  std::string host;
  std::string path;
  std::string method;
  std::map<std::string, std::string> requestHeaders;
  std::optional<Bytes> requestBody;
  /// Absent when no response arrived.
  std::optional<std::int64_t> statusCode;
  std::map<std::string, std::string> responseHeaders;
  std::optional<Bytes> responseBody;
  /// Seconds.
  double duration = 0;
  /// Present when the exchange failed in transport.
  std::optional<std::string> errorDescription;
  std::optional<std::string> mimeType;
  bool isMocked = false;
  bool isIntercepted = false;
  bool isEnvironmentRewritten = false;
  /// The URL before a rewrite.
  std::optional<std::string> originalURL;
  /// The screen on view when the request was made.
  std::optional<std::string> screenName;
  /// The capture path that made the record.
  std::optional<std::string> source;

  bool operator==(const TransferableNetworkRequest&) const = default;

  static constexpr auto fields() {
    return std::tuple{
        Field{"id", &TransferableNetworkRequest::id},
        Field{"timestamp", &TransferableNetworkRequest::timestamp},
        Field{"url", &TransferableNetworkRequest::url},
        Field{"host", &TransferableNetworkRequest::host},
        Field{"path", &TransferableNetworkRequest::path},
        Field{"method", &TransferableNetworkRequest::method},
        Field{"requestHeaders", &TransferableNetworkRequest::requestHeaders},
        Field{"requestBody", &TransferableNetworkRequest::requestBody},
        Field{"statusCode", &TransferableNetworkRequest::statusCode},
        Field{"responseHeaders", &TransferableNetworkRequest::responseHeaders},
        Field{"responseBody", &TransferableNetworkRequest::responseBody},
        Field{"duration", &TransferableNetworkRequest::duration},
        Field{"errorDescription", &TransferableNetworkRequest::errorDescription},
        Field{"mimeType", &TransferableNetworkRequest::mimeType},
        Field{"isMocked", &TransferableNetworkRequest::isMocked},
        Field{"isIntercepted", &TransferableNetworkRequest::isIntercepted},
        Field{"isEnvironmentRewritten", &TransferableNetworkRequest::isEnvironmentRewritten},
        Field{"originalURL", &TransferableNetworkRequest::originalURL},
        Field{"screenName", &TransferableNetworkRequest::screenName},
        Field{"source", &TransferableNetworkRequest::source}};
  }
};

}  // namespace tarnix
