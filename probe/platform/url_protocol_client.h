#pragma once

#include <string_view>

#include "probe/platform/url_error.h"
#include "probe/platform/url_request.h"
#include "probe/platform/url_response.h"

namespace tarnix::platform {

enum class CacheStoragePolicy { allowed, allowedInMemoryOnly, notAllowed };

/// The part of URL loading that hands the host what a protocol has loaded for it. Lives as long as
/// the protocol that was given it. Called on the thread that the protocol is called on.
class UrlProtocolClient {
 public:
  virtual ~UrlProtocolClient() = default;

  virtual void didReceive(const UrlResponse& response, CacheStoragePolicy policy) = 0;
  virtual void didLoad(std::string_view data) = 0;
  virtual void didFinishLoading() = 0;
  virtual void didFailWithError(const UrlError& error) = 0;
  virtual void wasRedirectedTo(const UrlRequest& request, const UrlResponse& redirectResponse) = 0;
};

}  // namespace tarnix::platform
