#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "probe/link/timestamp.h"
#include "probe/model/body_limits.h"
#include "probe/platform/url_error.h"
#include "probe/platform/url_request.h"
#include "probe/platform/url_response.h"

namespace tarnix {

/// One exchange as the interceptor has seen it.
struct ObservedExchange {
  const platform::UrlRequest& request;
  Timestamp startTime;
  /// The last response over HTTP; none when none arrived.
  const std::optional<platform::UrlResponse>& response;
  const std::string& responseData;
  const std::optional<platform::UrlError>& error;
};

namespace network_recorder {

/// Keeps the exchange in the store and tells the companion. Any thread; the calls of one thread
/// reach the companion in their order.
void record(const ObservedExchange& exchange);

}  // namespace network_recorder
}  // namespace tarnix
