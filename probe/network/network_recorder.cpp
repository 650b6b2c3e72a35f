#include "probe/network/network_recorder.h"

#include <algorithm>
#include <array>
#include <memory>
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

void complete(TransferableNetworkRequest& record, ObservedExchange& exchange) {
  const Timestamp now = platform::now();
  record.id = Uuid::random();
  record.timestamp = now;
  record.requestBody = bodyOf(exchange.request);
  if (exchange.response && exchange.response->http) {
    platform::HttpResponseHead& head = *exchange.response->http;
    record.statusCode = head.statusCode;
    if (head.allHeaderFields) {
      record.responseHeaders = *std::move(head.allHeaderFields);
    }
    record.mimeType = std::move(exchange.response->mimeType);
  }
  if (exchange.responseData.size() > responseBodyLimit) {
    exchange.responseData.resize(responseBodyLimit);
  }
  record.responseBody = bodyFrom(std::move(exchange.responseData));
  record.duration = now.secondsSinceReference - exchange.startTime.secondsSinceReference;
  if (exchange.error) {
    record.errorDescription = exchange.error->localizedDescription;
  }
  // No flag tells of mocks and intercepts: the companion knows its own rules.
  record.screenName = ProbeState::shared().currentScreen();
  record.source = captureSource;
}

}  // namespace

std::shared_ptr<TransferableNetworkRequest> begin(const platform::UrlRequest& request) {
  auto record = std::make_shared<TransferableNetworkRequest>();
  record->url = request.url ? request.url->absoluteString() : unknown;
  record->host = request.url ? request.url->host().value_or(unknown) : unknown;
  record->path = request.url ? request.url->path() : "/";
  record->method = request.httpMethod.value_or("GET");
  if (request.allHTTPHeaderFields) {
    record->requestHeaders = *request.allHTTPHeaderFields;
  }
  return record;
}

void finish(std::shared_ptr<TransferableNetworkRequest> begun, ObservedExchange exchange) {
  complete(*begun, exchange);
  const std::shared_ptr<const TransferableNetworkRequest> made = std::move(begun);
  ProbeState::shared().addSharedRequest(made);
  if (!ProbeServer::shared().isConnected()) {
    // The sync of whoever connects from now on has the exchange: it is made from the store after
    // the connection counts as one. Waking the main thread for nobody would slow the host down.
    return;
  }
  std::optional<CompanionMessage> message =
      CompanionMessage::make(CompanionMessageType::eventHttpRequest, *made, platform::now());
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
