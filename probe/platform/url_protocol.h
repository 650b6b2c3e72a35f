#pragma once

#include <memory>

#include "probe/platform/url_protocol_client.h"
#include "probe/platform/url_request.h"

namespace tarnix::platform {

/// Loads one request in the place of the platform's own loading. Called on whatever thread the host
/// makes the request on; never two calls at once.
class UrlProtocol {
 public:
  virtual ~UrlProtocol() = default;

  virtual void startLoading() = 0;
  /// The host wants nothing more of it. Once, also after everything was loaded.
  virtual void stopLoading() = 0;
};

/// A kind of protocol. Lives as long as the process. Any thread.
class UrlProtocolClass {
 public:
  virtual ~UrlProtocolClass() = default;

  /// Whether this protocol loads `request`. The first class that says so gets it.
  virtual bool canInit(const UrlRequest& request) = 0;
  virtual UrlRequest canonicalRequest(UrlRequest request) = 0;
  virtual std::unique_ptr<UrlProtocol> make(UrlRequest request, UrlProtocolClient& client) = 0;
};

}  // namespace tarnix::platform
