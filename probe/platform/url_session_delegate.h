#pragma once

#include <optional>
#include <string_view>

#include "probe/platform/url_error.h"
#include "probe/platform/url_request.h"
#include "probe/platform/url_response.h"

namespace tarnix::platform {

/// Hears what becomes of the tasks of a session. Called on one thread at a time.
class UrlSessionDelegate {
 public:
  enum class ResponseDisposition { cancel, allow };

  virtual ~UrlSessionDelegate() = default;

  /// Returns whether the task goes on.
  virtual ResponseDisposition didReceiveResponse(UrlResponse response) = 0;

  /// The next bytes of the body. Where the host has its data from the platform itself, only as
  /// many come as anybody looks at.
  virtual void didReceiveData(std::string_view data) = 0;

  /// Returns the request that is followed in the place of `newRequest`.
  virtual UrlRequest willPerformHTTPRedirection(const UrlResponse& response,
                                                const UrlRequest& newRequest) = 0;

  /// The last call for a task, with an error when it failed or was cancelled.
  virtual void didComplete(const std::optional<UrlError>& error) = 0;
};

}  // namespace tarnix::platform
