#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "probe/model/url.h"

namespace tarnix::platform {

/// What only responses over HTTP have.
struct HttpResponseHead {
  std::int64_t statusCode = 0;
  /// Such as "HTTP/1.1".
  std::string httpVersion;
  /// Nothing when a name or value among them is no text.
  std::optional<std::map<std::string, std::string>> allHeaderFields;
};

struct UrlResponse {
  Url url;
  /// Without parameters, such as "text/html".
  std::optional<std::string> mimeType;
  std::optional<HttpResponseHead> http;
};

}  // namespace tarnix::platform
