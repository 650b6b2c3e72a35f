#include "probe/network/network_recorder.h"

#include <map>
#include <thread>

#include "probe/model/full_sync_payload.h"
#include "probe/model/transferable_network_request.h"
#include "tests/fakes/fake_input_stream.h"
#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

using Fields = std::map<std::string, std::string>;

class NetworkRecorderTest : public ServerTest {
 protected:
  NetworkRecorderTest() { request_.url = Url("https://shop.test/users/42?q=1"); }

  TransferableNetworkRequest record() {
    network_recorder::record({request_, startTime_, response_, data_, error_});
    return ProbeState::shared().httpRequests().back();
  }

  platform::UrlRequest request_;
  Timestamp startTime_;
  std::optional<platform::UrlResponse> response_;
  std::string data_;
  std::optional<platform::UrlError> error_;
};

TEST_F(NetworkRecorderTest, FillsTheRecord) {
  request_.httpMethod = "POST";
  request_.allHTTPHeaderFields = Fields{{"X-One", "1"}};
  request_.httpBody = "out";
  response_ = {*request_.url, "text/html",
               platform::HttpResponseHead{201, "HTTP/1.1", Fields{{"Server", "s"}}}};
  data_ = "in";
  error_ = {"d", 7, "cut off"};
  ProbeState::shared().setScreen("Users");
  startTime_ = Timestamp::from(world_.clock.time);
  world_.clock.time += std::chrono::milliseconds(250);

  const TransferableNetworkRequest record = this->record();
  EXPECT_NE(record.id, Uuid());
  EXPECT_EQ(record.timestamp, Timestamp::from(world_.clock.time));
  EXPECT_EQ(record.url, "https://shop.test/users/42?q=1");
  EXPECT_EQ(record.host, "shop.test");
  EXPECT_EQ(record.path, "/users/42");
  EXPECT_EQ(record.method, "POST");
  EXPECT_EQ(record.requestHeaders, (Fields{{"X-One", "1"}}));
  EXPECT_EQ(record.requestBody, Bytes{"out"});
  EXPECT_EQ(record.statusCode, 201);
  EXPECT_EQ(record.responseHeaders, (Fields{{"Server", "s"}}));
  EXPECT_EQ(record.responseBody, Bytes{"in"});
  EXPECT_NEAR(record.duration, 0.25, 1e-5) << "in seconds";
  EXPECT_EQ(record.errorDescription, "cut off");
  EXPECT_EQ(record.mimeType, "text/html");
  EXPECT_FALSE(record.isMocked);
  EXPECT_FALSE(record.isIntercepted);
  EXPECT_FALSE(record.isEnvironmentRewritten);
  EXPECT_EQ(record.originalURL, std::nullopt);
  EXPECT_EQ(record.screenName, "Users");
  EXPECT_EQ(record.source, "URLSession");
}

TEST_F(NetworkRecorderTest, HasWordsForWhatIsMissing) {
  request_.url.reset();
  ProbeState::shared().setScreen("");
  const TransferableNetworkRequest record = this->record();
  EXPECT_EQ(record.url, "unknown");
  EXPECT_EQ(record.host, "unknown");
  EXPECT_EQ(record.path, "/");
  EXPECT_EQ(record.method, "GET");
  EXPECT_TRUE(record.requestHeaders.empty());
  EXPECT_EQ(record.requestBody, std::nullopt);
  EXPECT_EQ(record.statusCode, std::nullopt);
  EXPECT_TRUE(record.responseHeaders.empty());
  EXPECT_EQ(record.responseBody, std::nullopt);
  EXPECT_EQ(record.errorDescription, std::nullopt);
  EXPECT_EQ(record.mimeType, std::nullopt);
  EXPECT_EQ(record.screenName, "") << "present, if empty";
}

TEST_F(NetworkRecorderTest, KnowsAUrlWithoutHost) {
  request_.url = Url("http:///x");
  EXPECT_EQ(record().host, "unknown");
  EXPECT_EQ(record().path, "/x");
  request_.url = Url("http://shop.test");
  EXPECT_EQ(record().path, "");
}

TEST_F(NetworkRecorderTest, LeavesOutHeadersThatAreNoText) {
  response_ = {*request_.url, std::nullopt, platform::HttpResponseHead{200, "", std::nullopt}};
  EXPECT_TRUE(record().responseHeaders.empty());
  EXPECT_EQ(record().statusCode, 200);
}

TEST_F(NetworkRecorderTest, TakesNothingFromAResponseThatIsNotHttp) {
  response_ = {*request_.url, "text/html", std::nullopt};
  EXPECT_EQ(record().statusCode, std::nullopt);
  EXPECT_EQ(record().mimeType, std::nullopt);
}

TEST_F(NetworkRecorderTest, CutsBodiesAtTheirLimits) {
  const std::string large = std::string(65'535, 'a') + "bc";
  request_.httpBody = large;
  data_ = large;
  EXPECT_EQ(record().requestBody->data, large.substr(0, 65'536));
  EXPECT_EQ(record().responseBody->data, large.substr(0, 4'096));
  request_.httpBody = large.substr(0, 65'536);
  data_ = large.substr(0, 4'096);
  EXPECT_EQ(record().requestBody->data.size(), 65'536U);
  EXPECT_EQ(record().responseBody->data.size(), 4'096U);
}

TEST_F(NetworkRecorderTest, TakesAnEmptyBodyForNone) {
  request_.httpBody = "";
  EXPECT_EQ(record().requestBody, std::nullopt);
  request_.httpBody.reset();
  request_.httpBodyStream = std::make_shared<fakes::FakeInputStream>("");
  EXPECT_EQ(record().requestBody, std::nullopt);
}

TEST_F(NetworkRecorderTest, PrefersTheBodyToTheStream) {
  auto stream = std::make_shared<fakes::FakeInputStream>("stream");
  request_.httpBodyStream = stream;
  request_.httpBody = "body";
  EXPECT_EQ(record().requestBody->data, "body");
  EXPECT_EQ(stream->opens, 0);
}

TEST_F(NetworkRecorderTest, ReadsAStreamInChunks) {
  auto stream = std::make_shared<fakes::FakeInputStream>(std::string(5'000, 'x'));
  request_.httpBodyStream = stream;
  EXPECT_EQ(record().requestBody->data, std::string(5'000, 'x'));
  EXPECT_EQ(stream->wanted, (std::vector<std::size_t>{4'096, 4'096}));
  EXPECT_EQ(stream->opens, 1);
  EXPECT_EQ(stream->closes, 1);
}

TEST_F(NetworkRecorderTest, ReadsNoMoreOfAStreamThanItKeeps) {
  auto stream = std::make_shared<fakes::FakeInputStream>(std::string(100'000, 'x'));
  stream->largestRead = 3'000;
  request_.httpBodyStream = stream;
  EXPECT_EQ(record().requestBody->data.size(), 65'536U);
  EXPECT_EQ(stream->rest.size(), 100'000U - 65'536U);
  EXPECT_EQ(stream->wanted.back(), 65'536U - 21 * 3'000U) << "only what is left";
  EXPECT_EQ(stream->closes, 1);
}

TEST_F(NetworkRecorderTest, StopsAtAStreamThatFailsOrEnds) {
  auto failing = std::make_shared<fakes::FakeInputStream>(std::string(10'000, 'x'));
  failing->readsUntilFailure = 1;
  request_.httpBodyStream = failing;
  EXPECT_EQ(record().requestBody->data.size(), 4'096U);
  EXPECT_EQ(failing->closes, 1);

  auto promising = std::make_shared<fakes::FakeInputStream>("x");
  promising->promisesMore = true;
  request_.httpBodyStream = promising;
  EXPECT_EQ(record().requestBody->data, "x");
  EXPECT_EQ(promising->wanted.size(), 2U);
}

TEST_F(NetworkRecorderTest, TellsTheCompanionOnTheMainQueue) {
  startServer();
  const auto companion = connectCompanion();
  companion->written.clear();
  const TransferableNetworkRequest record = this->record();
  EXPECT_EQ(companion->written, "") << "not before the main queue's turn";
  world_.settle();
  const std::vector<CompanionMessage> messages = messagesOf(companion->written);
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].type, CompanionMessageType::eventHttpRequest);
  EXPECT_EQ(messages[0].decode<TransferableNetworkRequest>(), record);
}

TEST_F(NetworkRecorderTest, KeepsWhatHasNoJsonForm) {
  startServer();
  const auto companion = connectCompanion();
  companion->written.clear();
  request_.httpMethod = "\xFF";
  record();
  world_.settle();
  EXPECT_EQ(companion->written, "");
  EXPECT_EQ(ProbeState::shared().httpRequests().size(), 1U);
}

TEST_F(NetworkRecorderTest, KeepsWhatNobodyIsThereFor) {
  record();
  world_.settle();
  EXPECT_EQ(ProbeState::shared().httpRequests().size(), 1U);
}

TEST_F(NetworkRecorderTest, HasASyncTellWhatHappenedBeforeIt) {
  startServer();
  const TransferableNetworkRequest record = this->record();
  const auto companion = connectCompanion();
  const std::vector<CompanionMessage> messages = messagesOf(companion->written);
  ASSERT_FALSE(messages.empty());
  EXPECT_EQ(messages[0].type, CompanionMessageType::syncFull);
  const auto sync = messages[0].decode<FullSyncPayload>();
  ASSERT_TRUE(sync);
  EXPECT_EQ(sync->httpRequests, std::vector{record});
  EXPECT_EQ(messages.size(), 1U) << "it is not told a second time";
}

TEST_F(NetworkRecorderTest, KeepsTheOrderOfEachThread) {
  startServer();
  const auto companion = connectCompanion();
  companion->written.clear();
  // Fewer than the link has room for at once.
  constexpr int threadCount = 4;
  constexpr int perThread = 15;
  std::vector<std::thread> threads;
  for (int thread = 0; thread < threadCount; ++thread) {
    threads.emplace_back([thread] {
      for (int turn = 0; turn < perThread; ++turn) {
        platform::UrlRequest request;
        request.url = Url("http://" + std::to_string(thread) + ".test/" + std::to_string(turn));
        network_recorder::record({request, {}, std::nullopt, "", std::nullopt});
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  world_.settle();
  std::map<std::string, std::vector<std::string>> pathsOf;
  for (const CompanionMessage& message : messagesOf(companion->written)) {
    const auto record = message.decode<TransferableNetworkRequest>();
    pathsOf[record->host].push_back(record->path);
  }
  ASSERT_EQ(pathsOf.size(), static_cast<std::size_t>(threadCount));
  for (const auto& [host, paths] : pathsOf) {
    ASSERT_EQ(paths.size(), static_cast<std::size_t>(perThread));
    for (int turn = 0; turn < perThread; ++turn) {
      EXPECT_EQ(paths[static_cast<std::size_t>(turn)], "/" + std::to_string(turn)) << host;
    }
  }
  EXPECT_EQ(ProbeState::shared().httpRequests().size(),
            static_cast<std::size_t>(threadCount * perThread));
}

}  // namespace
}  // namespace tarnix::tests
