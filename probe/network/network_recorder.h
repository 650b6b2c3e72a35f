#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "probe/link/timestamp.h"
#include "probe/model/body_limits.h"
#include "probe/model/transferable_network_request.h"
#include "probe/platform/url_error.h"
#include "probe/platform/url_request.h"
#include "probe/platform/url_response.h"

namespace tarnix {

/// One exchange as the interceptor has seen it.
struct ObservedExchange {
  const platform::UrlRequest& request;
  Timestamp startTime;
  /// The last response over HTTP; none when none arrived.
  std::optional<platform::UrlResponse> response;
  std::string responseData;
  const std::optional<platform::UrlError>& error;
};

namespace network_recorder {

/// What a record says of the request, but for its body, of which there may be more by the end.
std::shared_ptr<TransferableNetworkRequest> begin(const platform::UrlRequest& request);

/// Adds the rest, keeps the exchange in the store and tells the companion. Any thread; the calls of
/// one thread reach the companion in their order.
void finish(std::shared_ptr<TransferableNetworkRequest> begun, ObservedExchange exchange);

/// Both in one.
inline void record(ObservedExchange exchange) {
  auto begun = begin(exchange.request);
  finish(std::move(begun), std::move(exchange));
}

}  // namespace network_recorder
}  // namespace tarnix
