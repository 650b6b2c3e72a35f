#pragma once

#include <map>
#include <string>

#include "probe/model/full_sync_payload.h"

/// One of each record, with every optional field present.
namespace tarnix::tests::examples {

inline Uuid uuid(char digit) {
  return Uuid::parse(std::string(8, digit) + "-0000-4000-8000-0000000000AB").value();
}

inline TransferableNetworkRequest networkRequest() {
  TransferableNetworkRequest request;
  request.id = uuid('1');
  request.timestamp = {786'000'000.25};
  request.url = "https://shop.example/cart?id=7";
  request.host = "shop.example";
  request.path = "/cart";
  request.method = "POST";
  request.requestHeaders = {{"Accept", "*/*"}, {"X-Empty", ""}};
  request.requestBody = Bytes{std::string("\x00\xff{}", 4)};
  request.statusCode = 201;
  request.responseHeaders = {{"Content-Type", "text/plain"}};
  request.responseBody = Bytes{"ok"};
  request.duration = 0.125;
  request.errorDescription = "connection reset";
  request.mimeType = "text/plain";
  request.isMocked = true;
  request.isIntercepted = false;
  request.isEnvironmentRewritten = true;
  request.originalURL = "https://old.example/cart?id=7";
  request.screenName = "Cart";
  request.source = "URLSession";
  return request;
}

inline TransferableLogEntry logEntry() {
  return {.id = uuid('2'),
          .timestamp = {786'000'001.5},
          .level = "WARN",
          .category = "cart",
          .message = "slow \"reply\"\n",
          .file = "cart.cpp",
          .line = 42,
          .screenName = "Cart"};
}

inline TransferableWSFrame wsFrame() {
  return {.id = uuid('3'),
          .connectionId = uuid('4'),
          .timestamp = {1},
          .direction = "in",
          .frameType = "text",
          .payload = Bytes{"hi"},
          .payloadString = "hi"};
}

inline TransferableWSConnection wsConnection() {
  return {.id = uuid('4'),
          .url = "wss://shop.example/live",
          .host = "shop.example",
          .startTime = {0},
          .status = "closed",
          .frames = {wsFrame()},
          .closeCode = 1000,
          .closeReason = "done"};
}

inline TransferableUserDefaultsEntry userDefaultsEntry() {
  return {.id = "theme", .key = "theme", .displayValue = "dark", .valueType = "String"};
}

inline TransferableKeychainEntry keychainEntry() {
  return {.id = "k1",
          .itemClass = "generic",
          .service = "shop",
          .account = "ada",
          .accessGroup = "group",
          .createdAt = Timestamp{-1},
          .modifiedAt = Timestamp{2.5},
          .label = "Shop"};
}

inline TransferableEnvironment environment() {
  return {.id = uuid('5'),
          .name = "Staging",
          .baseURLs = {"https://a.example", "https://b.example"},
          .notes = ""};
}

inline TransferableEnvironmentState environmentState() {
  return {.environments = {environment()}, .activeEnvironmentId = uuid('5')};
}

inline TransferableURLMatchPattern matchPattern() {
  return {.mode = "contains", .pattern = "/cart"};
}

inline TransferableMockRule mockRule() {
  return {.id = uuid('6'),
          .name = "Empty cart",
          .matchPattern = matchPattern(),
          .httpMethod = "GET",
          .mockStatusCode = 200,
          .mockResponseHeaders = {{"Content-Type", "application/json"}},
          .mockResponseBody = Bytes{"[]"},
          .isEnabled = true,
          .createdAt = {5}};
}

inline TransferableInterceptRule interceptRule() {
  return {.id = uuid('7'),
          .name = "Fail",
          .matchPattern = matchPattern(),
          .httpMethod = "PUT",
          .isEnabled = false,
          .createdAt = {6}};
}

inline TransferableRewriteRule rewriteRule() {
  return {.id = uuid('8'),
          .name = "To staging",
          .matchPattern = matchPattern(),
          .replacementHost = "staging.example",
          .isEnabled = true,
          .createdAt = {7}};
}

inline TransferableRulesState rulesState() {
  return {.rewriteRules = {rewriteRule()},
          .mockRules = {mockRule()},
          .interceptRules = {interceptRule()}};
}

inline TransferableQAResult qaResult() {
  return {.id = uuid('9'),
          .title = "Checkout",
          .notes = "with voucher",
          .priority = "high",
          .endpoints = {"/cart", "/pay"},
          .status = "failed",
          .failNotes = "500",
          .attachedRequestIds = {uuid('1')}};
}

inline TransferableQAState qaState() { return {.results = {qaResult()}, .buildNumber = "318"}; }

inline TarnixFlow::DeviceInfo deviceInfo() {
  return {.name = "Desk", .screenWidth = 1920, .screenHeight = 1080, .scale = 2};
}

inline TarnixFlowStep flowStep() {
  return {.action = TarnixFlowStep::Action::typeText,
          .screen = "Login",
          .label = "User",
          .text = "ada",
          .startCoordinates = TarnixFlowStep::Coordinates{.x = 1.5, .y = -2},
          .endCoordinates = TarnixFlowStep::Coordinates{.x = 0, .y = 1e9},
          .extra = std::map<std::string, std::string>{{"speed", "slow"}}};
}

inline TarnixFlow flow() {
  return {.id = uuid('A'),
          .name = "Log in",
          .description = "as Ada",
          .steps = {flowStep()},
          .recordedAt = {8},
          .device = deviceInfo()};
}

inline FullSyncPayload fullSync() {
  return {.httpRequests = {networkRequest()},
          .wsConnections = {wsConnection()},
          .logEntries = {logEntry()},
          .environmentState = environmentState(),
          .rulesState = rulesState(),
          .qaState = qaState(),
          .userDefaultsEntries = {userDefaultsEntry()},
          .keychainEntries = {keychainEntry()},
          .currentScreen = "Cart",
          .deviceName = "Desk",
          .appName = "Shop",
          .appVersion = "2.4.1 (318)",
          .recordedFlows = std::vector<TarnixFlow>{flow()}};
}

}  // namespace tarnix::tests::examples
