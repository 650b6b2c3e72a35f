#include "companion/command/har_log.h"

#include <gtest/gtest.h>

#include "probe/link/json_codec.h"

namespace tarnix::companion::har {
namespace {

TransferableNetworkRequest exchange() {
  TransferableNetworkRequest made;
  // 2001-01-01 00:01:40 at the end.
  made.timestamp.secondsSinceReference = 100;
  made.duration = 0.25;
  made.url = "https://shop.test/a?one=1&two=&three&=4#f";
  made.host = "shop.test";
  made.path = "/a";
  made.method = "POST";
  made.requestHeaders = {{"Content-Type", "text/plain"}, {"Cookie", "a=1; b=x=y"}};
  made.requestBody = Bytes{"out"};
  made.statusCode = 302;
  made.responseHeaders = {{"location", "/b"}, {"Set-Cookie", "c=1; Path=/\nd=2"}};
  made.responseBody = Bytes{"in"};
  made.mimeType = "text/html";
  return made;
}

Entry entryOf(const TransferableNetworkRequest& made) {
  return archiveOf({made}).log.entries.at(0);
}

std::string text(const std::vector<NameValue>& pairs) {
  std::string result;
  for (const auto& [name, value] : pairs) {
    result += name + "=" + value + " ";
  }
  return result;
}

TEST(HarLogTest, TellsAnExchange) {
  const Entry entry = entryOf(exchange());
  EXPECT_EQ(entry.startedDateTime, "2001-01-01T00:01:39.750Z");
  EXPECT_DOUBLE_EQ(entry.time, 250);
  EXPECT_DOUBLE_EQ(entry.timings.send + entry.timings.wait + entry.timings.receive, entry.time);
  EXPECT_EQ(entry.request.method, "POST");
  EXPECT_EQ(entry.request.url, exchange().url);
  EXPECT_EQ(text(entry.request.queryString), "one=1 two= three= =4 ");
  EXPECT_EQ(text(entry.request.cookies), "a=1 b=x=y ");
  EXPECT_EQ(entry.request.postData->mimeType, "text/plain");
  EXPECT_EQ(entry.request.postData->text, "out");
  EXPECT_EQ(entry.request.bodySize, 3);
  EXPECT_EQ(entry.response.status, 302);
  EXPECT_EQ(entry.response.redirectURL, "/b");
  EXPECT_EQ(text(entry.response.cookies), "c=1 d=2 ");
  EXPECT_EQ(entry.response.content.mimeType, "text/html");
  EXPECT_EQ(entry.response.content.text, "in");
  EXPECT_EQ(entry.response.content.size, 2);
  EXPECT_EQ(entry.response.error, std::nullopt);
}

TEST(HarLogTest, TellsAFailure) {
  TransferableNetworkRequest failed;
  failed.method = "GET";
  failed.url = "http://shop.test/";
  failed.errorDescription = "Connection refused";
  const Entry entry = entryOf(failed);
  EXPECT_EQ(entry.response.status, 0);
  EXPECT_EQ(entry.response.bodySize, -1);
  EXPECT_EQ(entry.response.error, "Connection refused");
  EXPECT_FALSE(entry.request.postData);
  EXPECT_FALSE(entry.response.content.text);
}

TEST(HarLogTest, WritesBytesThatAreNoTextAsBase64) {
  TransferableNetworkRequest made = exchange();
  made.requestBody = Bytes{"\xff"};
  made.responseBody = Bytes{std::string("\0", 1)};
  const Entry entry = entryOf(made);
  EXPECT_EQ(entry.request.postData->text, "/w==");
  EXPECT_EQ(entry.request.postData->comment, "base64");
  EXPECT_EQ(entry.response.content.text, "AA==");
  EXPECT_EQ(entry.response.content.encoding, "base64");
}

TEST(HarLogTest, BelievesTheServerAboutTheSize) {
  TransferableNetworkRequest made = exchange();
  made.responseHeaders["Content-Length"] = "100000";
  EXPECT_EQ(entryOf(made).response.content.size, 100'000);
}

TEST(HarLogTest, NeverCountsBackwards) {
  TransferableNetworkRequest made = exchange();
  made.duration = -1;
  EXPECT_EQ(entryOf(made).time, 0);
}

TEST(HarLogTest, HasEveryMemberThatTheFormatRequires) {
  const std::string json = encodeJson(archiveOf({exchange()})).value();
  for (const char* name :
       {"log",         "version",     "creator",     "entries",  "startedDateTime",
        "time",        "request",     "response",    "cache",    "timings",
        "method",      "url",         "httpVersion", "cookies",  "headers",
        "queryString", "headersSize", "bodySize",    "status",   "statusText",
        "content",     "redirectURL", "size",        "mimeType", "send",
        "wait",        "receive"}) {
    EXPECT_NE(json.find("\"" + std::string(name) + "\":"), std::string::npos) << name;
  }
  EXPECT_NE(json.find(R"("cache":{})"), std::string::npos);
  EXPECT_EQ(json.find("null"), std::string::npos);
}

TEST(HarLogTest, IsAnArchiveWithoutExchangesToo) {
  EXPECT_NE(encodeJson(archiveOf({})).value().find(R"("entries":[])"), std::string::npos);
}

}  // namespace
}  // namespace tarnix::companion::har
