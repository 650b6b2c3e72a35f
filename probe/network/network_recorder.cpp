#include "probe/network/network_recorder.h"

#include <algorithm>
#include <array>
#include <map>
#include <span>
#include <utility>

#include "probe/link/companion_message.h"
#include "probe/link/probe_server.h"
#include "probe/model/probe_state.h"
#include "probe/model/transferable_network_request.h"
#include "probe/platform/now.h"

namespace tarnix::network_recorder {
namespace {

constexpr std::size_t streamChunkSize = 4'096;
constexpr const char* captureSource = "URLSession";
constexpr const char* unknown = "unknown";

std::string readBeginning(platform::InputStream& stream) {
  std::string bytes;
  std::array<char, streamChunkSize> chunk;
  stream.open();
  while (bytes.size() < requestBodyLimit && stream.hasBytesAvailable()) {
    const std::size_t wanted = std::min(chunk.size(), requestBodyLimit - bytes.size());
    const std::ptrdiff_t count = stream.read(std::span(chunk).first(wanted));
    if (count <= 0) {
      break;
    }
    bytes.append(chunk.data(), std::min(static_cast<std::size_t>(count), wanted));
  }
  stream.close();
  return bytes;
}

/// An empty body counts as none.
std::optional<Bytes> bodyFrom(std::string bytes) {
  return bytes.empty() ? std::nullopt : std::optional(Bytes{std::move(bytes)});
}

std::optional<Bytes> bodyOf(const platform::UrlRequest& request) {
  if (request.httpBody) {
    return bodyFrom(request.httpBody->substr(0, requestBodyLimit));
  }
  return request.httpBodyStream == nullptr ? std::nullopt
                                           : bodyFrom(readBeginning(*request.httpBodyStream));
}

TransferableNetworkRequest recordOf(const ObservedExchange& exchange) {
  const platform::UrlRequest& request = exchange.request;
  const Timestamp now = platform::now();
  TransferableNetworkRequest record;
  record.id = Uuid::random();
  record.timestamp = now;
  record.url = request.url ? request.url->absoluteString() : unknown;
  record.host = request.url ? request.url->host().value_or(unknown) : unknown;
  record.path = request.url ? request.url->path() : "/";
  record.method = request.httpMethod.value_or("GET");
  record.requestHeaders =
      request.allHTTPHeaderFields.value_or(std::map<std::string, std::string>());
  record.requestBody = bodyOf(request);
  if (exchange.response && exchange.response->http) {
    const platform::HttpResponseHead& head = *exchange.response->http;
    record.statusCode = head.statusCode;
    record.responseHeaders = head.allHeaderFields.value_or(std::map<std::string, std::string>());
    record.mimeType = exchange.response->mimeType;
  }
  record.responseBody = bodyFrom(exchange.responseData.substr(0, responseBodyLimit));
  record.duration = now.secondsSinceReference - exchange.startTime.secondsSinceReference;
  if (exchange.error) {
    record.errorDescription = exchange.error->localizedDescription;
  }
  // No flag tells of mocks and intercepts: the companion knows its own rules.
  record.screenName = ProbeState::shared().currentScreen();
  record.source = captureSource;
  return record;
}

}  // namespace

void record(const ObservedExchange& exchange) {
  TransferableNetworkRequest made = recordOf(exchange);
  ProbeState::shared().addRequest(made);
  if (!ProbeServer::shared().isConnected()) {
    // The sync of whoever connects from now on has the exchange: it is made from the store after
    // the connection counts as one. Waking the main thread for nobody would slow the host down.
    return;
  }
  std::optional<CompanionMessage> message =
      CompanionMessage::make(CompanionMessageType::eventHttpRequest, made, platform::now());
  if (!message) {
    return;
  }
  platform::current().mainQueue->async([message = *std::move(message)]() mutable {
    try {
      ProbeServer::shared().send(std::move(message));
    } catch (...) {
      // Memory ran out: the event is lost, the store still has the exchange.
    }
  });
}

}  // namespace tarnix::network_recorder
