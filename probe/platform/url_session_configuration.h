#pragma once

#include <optional>
#include <vector>

#include "probe/platform/url_protocol.h"

namespace tarnix::platform {

/// What sessions are made from. One thread at a time.
class UrlSessionConfiguration {
 public:
  using ProtocolClasses = std::vector<UrlProtocolClass*>;

  virtual ~UrlSessionConfiguration() = default;

  /// The protocols that a session asks for each request, in this order, before the platform's own.
  virtual std::optional<ProtocolClasses> protocolClasses() const = 0;
  virtual void setProtocolClasses(std::optional<ProtocolClasses> classes) = 0;
};

}  // namespace tarnix::platform
