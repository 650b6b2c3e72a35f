#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "probe/link/record.h"

/// What the HTTP archive format, version 1.2, has of requests and responses, as far as it is
/// written here. Names are the format's own.
namespace tarnix::companion::har {

struct NameValue {
  std::string name;
  std::string value;

  static constexpr auto fields() {
    return std::tuple{Field{"name", &NameValue::name}, Field{"value", &NameValue::value}};
  }
};

struct PostData {
  std::string mimeType;
  std::string text;
  /// Says when the text is not the body itself, or not all of it.
  std::optional<std::string> comment;

  static constexpr auto fields() {
    return std::tuple{Field{"mimeType", &PostData::mimeType}, Field{"text", &PostData::text},
                      Field{"comment", &PostData::comment}};
  }
};

/// Sizes are in bytes, -1 when nothing tells.
struct Request {
  std::string method;
  std::string url;
  std::string httpVersion;
  std::vector<NameValue> cookies;
  std::vector<NameValue> headers;
  std::vector<NameValue> queryString;
  std::optional<PostData> postData;
  std::int64_t headersSize = -1;
  std::int64_t bodySize = -1;

  static constexpr auto fields() {
    return std::tuple{
        Field{"method", &Request::method},           Field{"url", &Request::url},
        Field{"httpVersion", &Request::httpVersion}, Field{"cookies", &Request::cookies},
        Field{"headers", &Request::headers},         Field{"queryString", &Request::queryString},
        Field{"postData", &Request::postData},       Field{"headersSize", &Request::headersSize},
        Field{"bodySize", &Request::bodySize}};
  }
};

struct Content {
  /// Of the body as the application read it, unpacked.
  std::int64_t size = 0;
  std::string mimeType;
  std::optional<std::string> text;
  /// "base64" when the body is no text.
  std::optional<std::string> encoding;
  /// Says when the text is not all of the body.
  std::optional<std::string> comment;

  static constexpr auto fields() {
    return std::tuple{Field{"size", &Content::size}, Field{"mimeType", &Content::mimeType},
                      Field{"text", &Content::text}, Field{"encoding", &Content::encoding},
                      Field{"comment", &Content::comment}};
  }
};

struct Response {
  /// 0 when none arrived.
  std::int64_t status = 0;
  std::string statusText;
  std::string httpVersion;
  std::vector<NameValue> cookies;
  std::vector<NameValue> headers;
  Content content;
  std::string redirectURL;
  std::int64_t headersSize = -1;
  /// Of the body as it came over the wire, packed.
  std::int64_t bodySize = -1;
  /// Why there is no response, under the name that browsers use.
  std::optional<std::string> error;

  static constexpr auto fields() {
    return std::tuple{
        Field{"status", &Response::status},           Field{"statusText", &Response::statusText},
        Field{"httpVersion", &Response::httpVersion}, Field{"cookies", &Response::cookies},
        Field{"headers", &Response::headers},         Field{"content", &Response::content},
        Field{"redirectURL", &Response::redirectURL}, Field{"headersSize", &Response::headersSize},
        Field{"bodySize", &Response::bodySize},       Field{"_error", &Response::error}};
  }
};

}  // namespace tarnix::companion::har
