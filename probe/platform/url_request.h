#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "probe/model/url.h"
#include "probe/platform/input_stream.h"
#include "probe/platform/property_value.h"

namespace tarnix::platform {

class UrlLoad;

/// A request as the host hands it to URL loading. Copies share the body stream and the load.
struct UrlRequest {
  std::optional<Url> url;
  std::optional<std::string> httpMethod;
  std::optional<std::map<std::string, std::string>> allHTTPHeaderFields;
  /// The body, or at least as much of its beginning as is ever looked at.
  std::optional<std::string> httpBody;
  /// Where the body comes from when it is no `httpBody`; null when there is none.
  std::shared_ptr<InputStream> httpBodyStream;
  /// What somebody noted about the request. Never sent.
  std::map<std::string, PropertyValue> properties;
  /// How the platform itself performs the request; null where that is not its own.
  std::shared_ptr<UrlLoad> load;
};

}  // namespace tarnix::platform
