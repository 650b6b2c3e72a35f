#include "bench/sample_sync.h"

#include <fmt/format.h>

#include <random>

namespace tarnix::bench {
namespace {

Bytes sampleBody(std::size_t size, std::mt19937& generator) {
  Bytes body;
  body.data.resize(size);
  for (char& byte : body.data) {
    byte = static_cast<char>(generator());
  }
  return body;
}

}  // namespace

FullSyncPayload sampleSync(std::size_t requests, std::size_t requestBodySize,
                           std::size_t responseBodySize) {
  std::mt19937 generator(1);
  FullSyncPayload sync;
  for (std::size_t index = 0; index < requests; ++index) {
    TransferableNetworkRequest request;
    request.id = Uuid::random();
    request.timestamp.secondsSinceReference = 785'000'000.123456 + static_cast<double>(index);
    request.host = "api.example.org";
    request.path = fmt::format("/v1/articles/{}", index);
    request.url = "https://" + request.host + request.path + "?page=2&size=50";
    request.method = index % 4 == 0 ? "POST" : "GET";
    request.requestHeaders = {{"Accept", "application/json"},
                              {"Accept-Encoding", "gzip, deflate"},
                              {"User-Agent", "Mozilla/5.0"}};
    request.statusCode = 200;
    request.responseHeaders = {{"content-type", "application/json; charset=utf-8"},
                               {"etag", fmt::format("W/\"{:x}\"", generator())},
                               {"server", "nginx"}};
    if (requestBodySize > 0) {
      request.requestBody = sampleBody(requestBodySize, generator);
    }
    if (responseBodySize > 0) {
      request.responseBody = sampleBody(responseBodySize, generator);
    }
    request.duration = 0.0421 + static_cast<double>(index) / 1000;
    request.mimeType = "application/json";
    request.screenName = "Articles";
    request.source = "URLSession";
    sync.httpRequests.push_back(std::move(request));

    TransferableLogEntry entry;
    entry.id = Uuid::random();
    entry.timestamp = sync.httpRequests.back().timestamp;
    entry.level = index % 10 == 0 ? "WARN" : "INFO";
    entry.category = "Net.HTTP";
    entry.message = fmt::format("GET \"/v1/articles/{}\" answered in {} ms", index, index % 90);
    entry.screenName = "Articles";
    sync.logEntries.push_back(std::move(entry));
  }
  sync.currentScreen = "Articles";
  sync.deviceName = "workstation";
  sync.appName = "Reader";
  sync.appVersion = "2.4.1 (318)";
  return sync;
}

}  // namespace tarnix::bench
