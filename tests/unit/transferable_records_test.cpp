#include <gtest/gtest.h>

#include <algorithm>

#include "probe/link/json_codec.h"
#include "probe/model/screen_html_response.h"
#include "tests/unit/example_records.h"
#include "tests/unit/json_edit.h"

namespace tarnix::tests {
namespace {

using Keys = std::vector<std::string>;

/// The keys of a record in their order, those of optional fields with a question mark behind.
bool isOptional(const std::string& key) { return key.back() == '?'; }
std::string nameOf(const std::string& key) {
  return isOptional(key) ? key.substr(0, key.size() - 1) : key;
}

template <class R>
void expectRecord(const R& full, const Keys& keys) {
  const std::string json = encodeJson(full).value();
  EXPECT_EQ(decodeJson<R>(json), full) << json;

  Keys names;
  std::transform(keys.begin(), keys.end(), std::back_inserter(names), nameOf);
  EXPECT_EQ(keysOf(json), names);

  std::string minimal = json;
  for (const std::string& key : keys) {
    const std::string name = nameOf(key);
    const std::string missing = without(json, name);
    const std::string null = with(json, name, "null");
    if (isOptional(key)) {
      const std::optional<R> decoded = decodeJson<R>(missing);
      ASSERT_TRUE(decoded) << name << " may be absent";
      EXPECT_FALSE(*decoded == full) << name;
      EXPECT_EQ(decodeJson<R>(null), decoded) << name << " may be null";
      EXPECT_TRUE(sameJson(encodeJson(*decoded).value(), missing)) << name << " is left out";
      minimal = without(minimal, name);
    } else {
      EXPECT_FALSE(decodeJson<R>(missing)) << name << " is required";
      EXPECT_FALSE(decodeJson<R>(null)) << name << " may not be null";
    }
    EXPECT_FALSE(decodeJson<R>(with(json, name, "[[]]"))) << name << " has a type";
  }
  const std::optional<R> least = decodeJson<R>(minimal);
  ASSERT_TRUE(least);
  EXPECT_TRUE(sameJson(encodeJson(*least).value(), minimal));

  EXPECT_EQ(decodeJson<R>(with(json, "aKeyOfALaterVersion", "{\"a\":[1]}")), full);
  EXPECT_FALSE(decodeJson<R>("[]"));
  EXPECT_FALSE(decodeJson<R>("null"));
}

TEST(TransferableRecords, TravelByTheirFieldsAndKeepThem) {
  expectRecord(examples::networkRequest(), {"id",
                                            "timestamp",
                                            "url",
                                            "host",
                                            "path",
                                            "method",
                                            "requestHeaders",
                                            "requestBody?",
                                            "statusCode?",
                                            "responseHeaders",
                                            "responseBody?",
                                            "duration",
                                            "errorDescription?",
                                            "mimeType?",
                                            "isMocked",
                                            "isIntercepted",
                                            "isEnvironmentRewritten",
                                            "originalURL?",
                                            "screenName?",
                                            "source?"});
  expectRecord(examples::logEntry(),
               {"id", "timestamp", "level", "category", "message", "file", "line", "screenName?"});
  expectRecord(examples::wsConnection(), {"id", "url", "host", "startTime", "status", "frames",
                                          "closeCode?", "closeReason?"});
  expectRecord(examples::wsFrame(), {"id", "connectionId", "timestamp", "direction", "frameType",
                                     "payload?", "payloadString?"});
  expectRecord(examples::userDefaultsEntry(), {"id", "key", "displayValue", "valueType"});
  expectRecord(examples::keychainEntry(), {"id", "itemClass", "service", "account", "accessGroup?",
                                           "createdAt?", "modifiedAt?", "label?"});
  expectRecord(examples::environmentState(), {"environments", "activeEnvironmentId?"});
  expectRecord(examples::environment(), {"id", "name", "baseURLs", "notes"});
  expectRecord(examples::rulesState(), {"rewriteRules", "mockRules", "interceptRules"});
  expectRecord(examples::matchPattern(), {"mode", "pattern"});
  expectRecord(examples::mockRule(),
               {"id", "name", "matchPattern", "httpMethod?", "mockStatusCode",
                "mockResponseHeaders", "mockResponseBody?", "isEnabled", "createdAt"});
  expectRecord(examples::interceptRule(),
               {"id", "name", "matchPattern", "httpMethod?", "isEnabled", "createdAt"});
  expectRecord(examples::rewriteRule(),
               {"id", "name", "matchPattern", "replacementHost", "isEnabled", "createdAt"});
  expectRecord(examples::qaState(), {"results", "buildNumber"});
  expectRecord(examples::qaResult(), {"id", "title", "notes", "priority", "endpoints", "status",
                                      "failNotes", "attachedRequestIds"});
  expectRecord(examples::flow(), {"id", "name", "description", "steps", "recordedAt", "device?"});
  expectRecord(examples::deviceInfo(), {"name", "screenWidth", "screenHeight", "scale"});
  expectRecord(examples::flowStep(), {"action", "screen", "label?", "text?", "startCoordinates?",
                                      "endCoordinates?", "extra?"});
  expectRecord(TarnixFlowStep::Coordinates{1.5, -2}, {"x", "y"});
  expectRecord(examples::fullSync(),
               {"httpRequests", "wsConnections", "logEntries", "environmentState", "rulesState",
                "qaState", "userDefaultsEntries", "keychainEntries", "currentScreen", "deviceName",
                "appName", "appVersion", "recordedFlows?"});
  expectRecord(ScreenHTMLResponse{"Home", "<html>", 3}, {"screen", "html", "elementCount"});
}

TEST(TransferableRecords, AreWrittenInOneForm) {
  EXPECT_EQ(encodeJson(examples::wsFrame()),
            R"({"id":"33333333-0000-4000-8000-0000000000AB",)"
            R"("connectionId":"44444444-0000-4000-8000-0000000000AB","timestamp":1.0,)"
            R"("direction":"in","frameType":"text","payload":"aGk=","payloadString":"hi"})");
}

TEST(TransferableRecords, OfAnExchangeWithoutResponseKeepTheHeaders) {
  TransferableNetworkRequest request = examples::networkRequest();
  request.statusCode.reset();
  request.responseBody.reset();
  request.mimeType.reset();
  request.responseHeaders.clear();
  const std::string json = encodeJson(request).value();
  const Keys keys = keysOf(json);
  for (const char* absent : {"statusCode", "responseBody", "mimeType"}) {
    EXPECT_EQ(std::count(keys.begin(), keys.end(), absent), 0) << absent;
  }
  EXPECT_NE(json.find(R"("responseHeaders":{})"), std::string::npos);
  EXPECT_EQ(json.find("null"), std::string::npos);
}

TEST(TransferableRecords, OfALineOfUnknownOriginKeepFileAndLine) {
  TransferableLogEntry entry = examples::logEntry();
  entry.file = "";
  entry.line = 0;
  EXPECT_NE(encodeJson(entry)->find(R"("file":"","line":0)"), std::string::npos);
}

TEST(TransferableRecords, AcceptIdentifiersInEitherCase) {
  const std::string lower =
      R"({"environments":[],"activeEnvironmentId":"abcdef01-0000-4000-8000-0000000000ab"})";
  const auto state = decodeJson<TransferableEnvironmentState>(lower);
  ASSERT_TRUE(state);
  EXPECT_EQ(encodeJson(*state),
            R"({"environments":[],"activeEnvironmentId":"ABCDEF01-0000-4000-8000-0000000000AB"})");
}

TEST(TransferableRecords, OfNoActiveEnvironmentHaveOneKey) {
  EXPECT_EQ(encodeJson(TransferableEnvironmentState{}), R"({"environments":[]})");
}

TEST(TransferableRecords, RefuseWhatIsNoIdentifierBytesOrTime) {
  const std::string frame = encodeJson(examples::wsFrame()).value();
  for (const auto& [key, value] :
       std::vector<std::pair<std::string, std::string>>{{"id", "\"33333333\""},
                                                        {"id", "3"},
                                                        {"payload", "\"aGk\""},
                                                        {"payload", "\"a Gk=\""},
                                                        {"payload", "1"},
                                                        {"timestamp", "\"1\""},
                                                        {"timestamp", "true"},
                                                        {"direction", "1"}}) {
    EXPECT_FALSE(decodeJson<TransferableWSFrame>(with(frame, key, value))) << key << value;
  }
}

TEST(TransferableRecords, RefuseAMapWithOtherThanStrings) {
  const std::string request = encodeJson(examples::networkRequest()).value();
  for (const char* value : {"{\"a\":1}", "{\"a\":null}", "[]", "\"a\""}) {
    EXPECT_FALSE(decodeJson<TransferableNetworkRequest>(with(request, "requestHeaders", value)));
  }
}

TEST(TarnixFlowStepAction, TravelsWithUnderscores) {
  using Action = TarnixFlowStep::Action;
  const std::vector<std::pair<Action, std::string>> table = {{Action::tap, "tap"},
                                                             {Action::swipe, "swipe"},
                                                             {Action::typeText, "type_text"},
                                                             {Action::longPress, "long_press"}};
  for (const auto& [action, text] : table) {
    TarnixFlowStep step;
    step.action = action;
    const std::string json = R"({"action":")" + text + R"(","screen":""})";
    EXPECT_EQ(encodeJson(step), json);
    EXPECT_EQ(decodeJson<TarnixFlowStep>(json), step);
  }
}

TEST(TarnixFlowStepAction, OutsideTheTableMakesTheFlowUnreadable) {
  const std::string flow = encodeJson(examples::flow()).value();
  EXPECT_TRUE(decodeJson<TarnixFlow>(flow));
  for (const char* action : {"typeText", "longPress", "Tap", "", "scroll"}) {
    const std::string steps = std::string(R"([{"action":")") + action + R"(","screen":"x"}])";
    EXPECT_FALSE(decodeJson<TarnixFlow>(with(flow, "steps", steps))) << action;
  }
}

}  // namespace
}  // namespace tarnix::tests
