#include "companion/command/har_log.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <vector>

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

struct SizeCase {
  const char* what;
  std::string method;
  std::int64_t status;
  std::map<std::string, std::string> headers;
  std::size_t kept;
  std::int64_t bodySize;
  std::int64_t contentSize;
  bool isBeginning;
};

TEST(HarLogTest, TellsTheSizesOfAResponse) {
  const std::vector<SizeCase> cases = {
      {"whole, without a length", "GET", 200, {}, 10, 10, 10, false},
      {"broken off", "GET", 200, {{"Content-Length", "100"}}, 10, 10, 10, false},
      {"cut", "GET", 200, {{"content-length", "100000"}}, 4096, 100'000, 100'000, true},
      {"cut, of unknown length", "GET", 200, {}, 4096, -1, 4096, true},
      {"cut, of a length that is none",
       "GET",
       200,
       {{"Content-Length", "9x"}},
       4096,
       -1,
       4096,
       true},
      {"of just the size that is kept",
       "GET",
       200,
       {{"Content-Length", "4096"}},
       4096,
       4096,
       4096,
       false},
      {"packed",
       "GET",
       200,
       {{"Content-Encoding", "gzip"}, {"Content-Length", "40"}},
       3000,
       40,
       3000,
       false},
      {"packed and cut",
       "GET",
       200,
       {{"Content-Encoding", "gzip"}, {"Content-Length", "4096"}},
       4096,
       4096,
       4096,
       true},
      {"packed, of unknown length", "GET", 200, {{"Content-Encoding", "br"}}, 30, -1, 30, false},
      {"the answer to HEAD", "HEAD", 200, {{"Content-Length", "5"}}, 0, 0, 0, false},
      {"not modified", "GET", 304, {{"Content-Length", "5"}}, 0, 0, 0, false},
      {"no content", "GET", 204, {}, 0, 0, 0, false},
      {"empty", "GET", 200, {{"Content-Length", "0"}}, 0, 0, 0, false},
  };
  for (const SizeCase& one : cases) {
    TransferableNetworkRequest made = exchange();
    made.method = one.method;
    made.statusCode = one.status;
    made.responseHeaders = one.headers;
    made.responseBody =
        one.kept == 0 ? std::nullopt : std::optional(Bytes{std::string(one.kept, 'x')});
    const Response response = entryOf(made).response;
    EXPECT_EQ(response.bodySize, one.bodySize) << one.what;
    EXPECT_EQ(response.content.size, one.contentSize) << one.what;
    EXPECT_EQ(response.content.comment,
              one.isBeginning ? std::optional<std::string>("the first 4096 bytes") : std::nullopt)
        << one.what;
  }
}

TEST(HarLogTest, TellsTheSizeOfARequest) {
  TransferableNetworkRequest made = exchange();
  made.requestBody = Bytes{std::string(65'536, 'x')};
  Request request = entryOf(made).request;
  EXPECT_EQ(request.bodySize, -1);
  EXPECT_EQ(request.postData->comment, "the first 65536 bytes");

  made.requestBody->data[0] = '\xff';
  EXPECT_EQ(entryOf(made).request.postData->comment, "base64, the first 65536 bytes");

  made.requestHeaders["content-length"] = "65536";
  request = entryOf(made).request;
  EXPECT_EQ(request.bodySize, 65'536);
  EXPECT_EQ(request.postData->comment, "base64");

  // The bytes of a pipe are not always there to be looked at.
  made.requestBody = std::nullopt;
  request = entryOf(made).request;
  EXPECT_EQ(request.bodySize, 65'536);
  EXPECT_FALSE(request.postData);
}

TEST(HarLogTest, HasAHeaderForEachCookieThatIsSet) {
  EXPECT_EQ(text(entryOf(exchange()).response.headers),
            "Set-Cookie=c=1; Path=/ Set-Cookie=d=2 location=/b ");
}

TEST(HarLogTest, BeginsWithWhatBeganFirst) {
  TransferableNetworkRequest slow = exchange();
  slow.duration = 10;
  slow.path = "/slow";
  slow.url = "https://shop.test/slow";
  const std::vector<Entry> entries = archiveOf({exchange(), slow, exchange()}).log.entries;
  ASSERT_EQ(entries.size(), 3U);
  EXPECT_EQ(entries[0].request.url, slow.url);
  EXPECT_EQ(entries[1].request.url, exchange().url);
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
