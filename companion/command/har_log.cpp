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
#include "probe/model/body_limits.h"
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

/// Calls `use` with each line. Several cookies are set on lines of one header's value.
template <class Use>
void forEachLine(std::string_view text, Use use) {
  while (true) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    use(text.substr(0, end));
    if (end == text.size()) {
      return;
    }
    text.remove_prefix(end + 1);
  }
}

std::vector<NameValue> listOf(const Headers& headers) {
  std::vector<NameValue> list;
  for (const auto& header : headers) {
    forEachLine(header.second, [&](std::string_view line) {
      list.push_back({header.first, std::string(line)});
    });
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

/// The cookies that a response sets, without their attributes.
std::vector<NameValue> cookiesSetBy(std::string_view header) {
  std::vector<NameValue> cookies;
  forEachLine(header, [&](std::string_view line) {
    const std::vector<NameValue> parts = pairsIn(line, ';');
    if (!parts.empty()) {
      cookies.push_back(parts.front());
    }
  });
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

std::optional<std::int64_t> announcedLength(const Headers& headers) {
  const std::string text = headerIn(headers, "Content-Length");
  std::int64_t length = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
  const bool isNumber = error == std::errc() && end == text.data() + text.size() && length >= 0;
  return isNumber ? std::optional(length) : std::nullopt;
}

/// Of what there is more than was kept.
std::string beginningOnly(std::size_t kept) { return fmt::format("the first {} bytes", kept); }

PostData postDataOf(const std::string& body, const std::string& type, bool isWhole) {
  PostData data{type, body, std::nullopt};
  if (!isText(body)) {
    data.text = encodeBase64(body);
    data.comment = "base64";
  }
  if (!isWhole) {
    data.comment = (data.comment ? *data.comment + ", " : "") + beginningOnly(body.size());
  }
  return data;
}

Request requestOf(const TransferableNetworkRequest& exchange) {
  Request request;
  request.method = exchange.method;
  request.url = exchange.url;
  request.httpVersion = assumedHttpVersion;
  request.cookies = pairsIn(headerIn(exchange.requestHeaders, "Cookie"), ';');
  request.headers = listOf(exchange.requestHeaders);
  request.queryString = pairsIn(queryOf(exchange.url), '&');
  const std::optional<std::int64_t> announced = announcedLength(exchange.requestHeaders);
  if (!exchange.requestBody) {
    request.bodySize = announced.value_or(0);
    return request;
  }
  const std::string& body = exchange.requestBody->data;
  const bool isWhole =
      body.size() < requestBodyLimit || announced == static_cast<std::int64_t>(body.size());
  request.bodySize = announced.value_or(isWhole ? static_cast<std::int64_t>(body.size()) : -1);
  request.postData = postDataOf(body, headerIn(exchange.requestHeaders, "Content-Type"), isWhole);
  return request;
}

/// Whether there can be a body. The length that is announced where there is none is another's.
bool hasBody(const TransferableNetworkRequest& exchange) {
  return exchange.method != "HEAD" && exchange.statusCode && exchange.statusCode != 204 &&
         exchange.statusCode != 304;
}

void describeBody(const TransferableNetworkRequest& exchange, Response& response) {
  Content& content = response.content;
  content.mimeType = exchange.mimeType.value_or(unknownMimeType);
  if (!hasBody(exchange) && !exchange.responseBody) {
    response.bodySize = exchange.statusCode ? 0 : -1;
    return;
  }
  const std::string body = exchange.responseBody.value_or(Bytes()).data;
  const auto kept = static_cast<std::int64_t>(body.size());
  const std::optional<std::int64_t> announced = announcedLength(exchange.responseHeaders);
  const bool isPacked = !headerIn(exchange.responseHeaders, "Content-Encoding").empty();
  const bool isWhole = body.size() < responseBodyLimit || (!isPacked && announced == kept);
  if (isPacked) {
    response.bodySize = announced.value_or(-1);
    content.size = kept;
  } else {
    // What arrived counts, which can be less than what was announced, unless only the beginning of
    // it was kept.
    response.bodySize = isWhole ? kept : announced.value_or(-1);
    content.size = isWhole ? kept : std::max(kept, announced.value_or(kept));
  }
  if (exchange.responseBody) {
    content.text = isText(body) ? body : encodeBase64(body);
    content.encoding = isText(body) ? std::nullopt : std::optional<std::string>("base64");
    content.comment = isWhole ? std::nullopt : std::optional(beginningOnly(body.size()));
  }
}

Response responseOf(const TransferableNetworkRequest& exchange) {
  Response response;
  response.status = exchange.statusCode.value_or(0);
  response.httpVersion = assumedHttpVersion;
  response.cookies = cookiesSetBy(headerIn(exchange.responseHeaders, "Set-Cookie"));
  response.headers = listOf(exchange.responseHeaders);
  response.redirectURL = headerIn(exchange.responseHeaders, "Location");
  describeBody(exchange, response);
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
  // All times are written alike, so that texts sort as times do.
  std::stable_sort(archive.log.entries.begin(), archive.log.entries.end(),
                   [](const Entry& one, const Entry& other) {
                     return one.startedDateTime < other.startedDateTime;
                   });
  return archive;
}

}  // namespace tarnix::companion::har
