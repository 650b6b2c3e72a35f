#include "companion/command/har_log.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <map>
#include <string_view>

#include "companion/command/exchange_text.h"
#include "probe/link/base64.h"
#include "probe/model/mime_type.h"

namespace tarnix::companion::har {
namespace {

// Nothing tells which it was; the format wants one.
constexpr const char* assumedHttpVersion = "HTTP/1.1";
constexpr const char* unknownMimeType = "application/octet-stream";

using Headers = std::map<std::string, std::string>;

std::string headerIn(const Headers& headers, std::string_view wanted) {
  for (const auto& [name, value] : headers) {
    if (isSameHeaderName(name, wanted)) {
      return value;
    }
  }
  return "";
}

std::vector<NameValue> listOf(const Headers& headers) {
  std::vector<NameValue> list;
  for (const auto& [name, value] : headers) {
    list.push_back({name, value});
  }
  return list;
}

std::string_view trimmed(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(' ');
  return begin == std::string_view::npos
             ? std::string_view()
             : text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

/// "a=1; b=2" and "a=1&b=2".
std::vector<NameValue> pairsIn(std::string_view text, char separator) {
  std::vector<NameValue> pairs;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::string_view pair = trimmed(text.substr(0, end));
    const std::size_t equals = std::min(pair.find('='), pair.size());
    if (!pair.empty()) {
      pairs.push_back({std::string(pair.substr(0, equals)),
                       std::string(pair.substr(std::min(equals + 1, pair.size())))});
    }
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return pairs;
}

/// Several cookies stand in one header on lines of their own; attributes are left out.
std::vector<NameValue> cookiesSetBy(std::string_view header) {
  std::vector<NameValue> cookies;
  while (!header.empty()) {
    const std::size_t end = std::min(header.find('\n'), header.size());
    const std::vector<NameValue> parts = pairsIn(header.substr(0, end), ';');
    if (!parts.empty()) {
      cookies.push_back(parts.front());
    }
    header.remove_prefix(std::min(end + 1, header.size()));
  }
  return cookies;
}

std::string_view queryOf(std::string_view url) {
  const std::size_t begin = url.find('?');
  if (begin == std::string_view::npos) {
    return {};
  }
  return url.substr(begin + 1, url.find('#', begin) - begin - 1);
}

std::string iso8601(Timestamp timestamp) {
  const auto time = std::chrono::floor<std::chrono::milliseconds>(timestamp.toTimePoint());
  const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
  return fmt::format("{:%Y-%m-%dT%H:%M:%S}.{:03}Z", fmt::gmtime(seconds), (time - seconds).count());
}

Request requestOf(const TransferableNetworkRequest& exchange) {
  Request request;
  request.method = exchange.method;
  request.url = exchange.url;
  request.httpVersion = assumedHttpVersion;
  request.cookies = pairsIn(headerIn(exchange.requestHeaders, "Cookie"), ';');
  request.headers = listOf(exchange.requestHeaders);
  request.queryString = pairsIn(queryOf(exchange.url), '&');
  request.bodySize = 0;
  if (exchange.requestBody) {
    const std::string& body = exchange.requestBody->data;
    request.bodySize = static_cast<std::int64_t>(body.size());
    const std::string type = headerIn(exchange.requestHeaders, "Content-Type");
    request.postData = isText(body) ? PostData{type, body, std::nullopt}
                                    : PostData{type, encodeBase64(body), "base64"};
  }
  return request;
}

Content contentOf(const TransferableNetworkRequest& exchange) {
  Content content;
  content.mimeType = exchange.mimeType.value_or(unknownMimeType);
  if (exchange.responseBody) {
    const std::string& body = exchange.responseBody->data;
    content.size = static_cast<std::int64_t>(body.size());
    content.text = isText(body) ? body : encodeBase64(body);
    content.encoding = isText(body) ? std::nullopt : std::optional<std::string>("base64");
  }
  // What the server announced is the truth about a body of which only the beginning was kept.
  const std::string length = headerIn(exchange.responseHeaders, "Content-Length");
  std::int64_t announced = 0;
  if (std::from_chars(length.data(), length.data() + length.size(), announced).ec == std::errc()) {
    content.size = std::max(content.size, announced);
  }
  return content;
}

Response responseOf(const TransferableNetworkRequest& exchange) {
  Response response;
  response.status = exchange.statusCode.value_or(0);
  response.httpVersion = assumedHttpVersion;
  response.cookies = cookiesSetBy(headerIn(exchange.responseHeaders, "Set-Cookie"));
  response.headers = listOf(exchange.responseHeaders);
  response.content = contentOf(exchange);
  response.redirectURL = headerIn(exchange.responseHeaders, "Location");
  response.bodySize = exchange.statusCode ? response.content.size : -1;
  response.error = exchange.errorDescription;
  return response;
}

Entry entryOf(const TransferableNetworkRequest& exchange) {
  const double milliseconds = std::max(exchange.duration * 1000, 0.0);
  Entry entry;
  // The probe notes the end.
  entry.startedDateTime = iso8601({exchange.timestamp.secondsSinceReference - milliseconds / 1000});
  entry.time = milliseconds;
  entry.request = requestOf(exchange);
  entry.response = responseOf(exchange);
  entry.timings.wait = milliseconds;
  return entry;
}

}  // namespace

Archive archiveOf(const std::vector<TransferableNetworkRequest>& exchanges) {
  Archive archive;
  archive.log.creator = {"tarnix", TARNIX_VERSION};
  for (const TransferableNetworkRequest& exchange : exchanges) {
    archive.log.entries.push_back(entryOf(exchange));
  }
  return archive;
}

}  // namespace tarnix::companion::har
