#include "probe/network/probe_network_interceptor.h"

#include "probe/network/probe_intercept_rules.h"
#include "probe/network/session_configuration_hook.h"
#include "tests/fakes/fake_url_protocol_client.h"
#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

using Calls = std::vector<std::string>;
using Fields = std::map<std::string, std::string>;

class ProbeNetworkInterceptorTest : public FakeWorldTest {
 protected:
  ProbeNetworkInterceptorTest() {
    session_configuration_hook::forgetInstallation();
    request_.url = Url("https://shop.test/users");
    request_.httpMethod = "GET";
  }
  ~ProbeNetworkInterceptorTest() override {
    ProbeMockRules::shared().removeRule(ruleId_);
    ProbeInterceptRules::shared().removeRule(ruleId_);
    session_configuration_hook::forgetInstallation();
  }

  static bool canInit(const char* url) {
    platform::UrlRequest request;
    request.url = Url(url);
    return ProbeNetworkInterceptor::canInit(request);
  }

  /// A rule for every request that does not say otherwise.
  ProbeMockRules::MockRule mockRule() const {
    return {ruleId_, "a mock", "", "contains", std::nullopt, 200, "mocked", {}};
  }
  ProbeInterceptRules::InterceptRule interceptRule() const {
    return {ruleId_, "No payments today", "", "contains", std::nullopt};
  }

  void start() {
    interceptor_ = ProbeNetworkInterceptor::protocolClass().make(request_, client_);
    interceptor_->startLoading();
  }

  fakes::FakeUrlSessionRecord& session() { return *world_.urlLoading.sessions.at(0); }

  platform::UrlResponse response(std::int64_t status) const {
    return {*request_.url, "text/html",
            platform::HttpResponseHead{status, "HTTP/1.1", Fields{{"Server", "s"}}}};
  }

  static std::vector<TransferableNetworkRequest> records() {
    return ProbeState::shared().httpRequests();
  }

  const Uuid ruleId_ = Uuid::random();
  platform::UrlRequest request_;
  fakes::FakeUrlProtocolClient client_;
  std::unique_ptr<platform::UrlProtocol> interceptor_;
};

TEST_F(ProbeNetworkInterceptorTest, ClaimsHttpAndNothingElse) {
  for (const char* url : {"http://x/", "https://x/", "HTTP://x/", "HtTpS://x", "http:x"}) {
    EXPECT_TRUE(canInit(url)) << url;
  }
  for (const char* url : {"ws://x/", "wss://x/", "file:///x", "data:,x", "ftp://x/", "/x", "//x/y",
                          "httpx://x", "http", ""}) {
    EXPECT_FALSE(canInit(url)) << url;
  }
  EXPECT_FALSE(ProbeNetworkInterceptor::canInit({})) << "no URL";
}

TEST_F(ProbeNetworkInterceptorTest, ClaimsNothingThatWasHandled) {
  const std::string handled = "com.tarnix.probe.handled";
  for (const platform::PropertyValue& value :
       {platform::PropertyValue{true}, platform::PropertyValue{false},
        platform::PropertyValue{std::string()}}) {
    request_.properties[handled] = value;
    EXPECT_FALSE(ProbeNetworkInterceptor::canInit(request_));
  }
  request_.properties = {{"com.tarnix.probe.other", {true}}};
  EXPECT_TRUE(ProbeNetworkInterceptor::canInit(request_));
}

TEST_F(ProbeNetworkInterceptorTest, LeavesRequestsAsTheyAre) {
  request_.httpBody = "x";
  const platform::UrlRequest canonical =
      ProbeNetworkInterceptor::protocolClass().canonicalRequest(request_);
  EXPECT_EQ(canonical.url, request_.url);
  EXPECT_EQ(canonical.httpBody, "x");
  EXPECT_TRUE(canonical.properties.empty());
}

TEST_F(ProbeNetworkInterceptorTest, ServesAMock) {
  ProbeMockRules::MockRule rule = mockRule();
  rule.statusCode = 418;
  rule.responseHeaders = {{"content-type", "text/plain; charset=utf-8"}, {"X", "1"}};
  ProbeMockRules::shared().addRule(rule);
  start();
  EXPECT_EQ(client_.calls,
            (Calls{"didReceive 418 not cached", "didLoad mocked", "didFinishLoading"}));
  const platform::UrlResponse& response = client_.responses.at(0);
  EXPECT_EQ(response.url, request_.url);
  EXPECT_EQ(response.mimeType, "text/plain");
  EXPECT_EQ(response.http->httpVersion, "HTTP/1.1");
  EXPECT_EQ(response.http->allHeaderFields, rule.responseHeaders) << "and no others";
  EXPECT_TRUE(world_.urlLoading.sessions.empty());

  ASSERT_EQ(records().size(), 1U);
  EXPECT_EQ(records()[0].statusCode, 418);
  EXPECT_EQ(records()[0].responseBody, Bytes{"mocked"});
  EXPECT_EQ(records()[0].responseHeaders, rule.responseHeaders);
  EXPECT_EQ(records()[0].mimeType, "text/plain");
  EXPECT_EQ(records()[0].errorDescription, std::nullopt);
  EXPECT_FALSE(records()[0].isMocked);
}

TEST_F(ProbeNetworkInterceptorTest, TellsTheClientOfAMockBeforeItRecords) {
  ProbeMockRules::shared().addRule(mockRule());
  std::vector<std::size_t> recordsAtCall;
  client_.onCall = [&] { recordsAtCall.push_back(records().size()); };
  start();
  EXPECT_EQ(recordsAtCall, (std::vector<std::size_t>{0, 0, 0}));
  EXPECT_EQ(records().size(), 1U);
}

TEST_F(ProbeNetworkInterceptorTest, ServesAnEmptyMock) {
  ProbeMockRules::MockRule rule = mockRule();
  rule.statusCode = 204;
  rule.responseBody = "";
  ProbeMockRules::shared().addRule(rule);
  start();
  EXPECT_EQ(client_.calls, (Calls{"didReceive 204 not cached", "didLoad ", "didFinishLoading"}));
  EXPECT_EQ(client_.responses.at(0).mimeType, std::nullopt);
  EXPECT_EQ(client_.responses.at(0).http->allHeaderFields, Fields());
  EXPECT_EQ(records().at(0).responseBody, std::nullopt);
  EXPECT_EQ(records().at(0).statusCode, 204);
}

TEST_F(ProbeNetworkInterceptorTest, CutsTheRecordOfAMockOnly) {
  ProbeMockRules::MockRule rule = mockRule();
  rule.responseBody = std::string(10'000, 'x');
  ProbeMockRules::shared().addRule(rule);
  start();
  EXPECT_EQ(client_.calls.at(1), "didLoad " + rule.responseBody);
  EXPECT_EQ(records().at(0).responseBody->data.size(), 4'096U);
}

TEST_F(ProbeNetworkInterceptorTest, ServesAMockForARequestWithoutUrl) {
  request_.url.reset();
  ProbeMockRules::shared().addRule(mockRule());
  start();
  EXPECT_EQ(client_.responses.at(0).url.absoluteString(), "https://mock");
  EXPECT_EQ(records().at(0).url, "unknown");
}

TEST_F(ProbeNetworkInterceptorTest, FailsAnInterceptedRequest) {
  ProbeInterceptRules::shared().addRule(interceptRule());
  std::size_t recordsAtCall = 99;
  client_.onCall = [&] { recordsAtCall = records().size(); };
  start();
  EXPECT_EQ(client_.calls, Calls{"didFailWithError TarnixProbe -1 Request intercepted by rule: No "
                                 "payments today"});
  EXPECT_EQ(recordsAtCall, 0U) << "the client first, then the record";
  EXPECT_TRUE(world_.urlLoading.sessions.empty());
  ASSERT_EQ(records().size(), 1U);
  EXPECT_EQ(records()[0].errorDescription, "Request intercepted by rule: No payments today");
  EXPECT_EQ(records()[0].statusCode, std::nullopt);
  EXPECT_TRUE(records()[0].responseHeaders.empty());
  EXPECT_FALSE(records()[0].isIntercepted);
}

TEST_F(ProbeNetworkInterceptorTest, PrefersAMockToAnIntercept) {
  ProbeInterceptRules::shared().addRule(interceptRule());
  ProbeMockRules::shared().addRule(mockRule());
  start();
  EXPECT_EQ(client_.calls.size(), 3U);
  EXPECT_EQ(records().at(0).errorDescription, std::nullopt);
}

TEST_F(ProbeNetworkInterceptorTest, ForwardsAMarkedCopy) {
  session_configuration_hook::installSwizzle();
  request_.httpBody = "out";
  request_.properties["mine"] = {true};
  start();
  ASSERT_EQ(world_.urlLoading.sessions.size(), 1U);
  EXPECT_TRUE(session().isResumed);
  EXPECT_EQ(session().request->url, request_.url);
  EXPECT_EQ(session().request->httpBody, "out");
  EXPECT_TRUE(session().request->properties.contains("mine"));
  EXPECT_TRUE(session().request->properties.contains("com.tarnix.probe.handled"));
  EXPECT_FALSE(ProbeNetworkInterceptor::canInit(*session().request)) << "never its own traffic";
  EXPECT_EQ(session().configuration, session_configuration_hook::internalConfig());
  EXPECT_TRUE(client_.calls.empty());
  EXPECT_TRUE(records().empty());
}

TEST_F(ProbeNetworkInterceptorTest, RelaysAResponse) {
  start();
  world_.clock.time += std::chrono::seconds(2);
  auto& delegate = *session().delegate;
  EXPECT_EQ(delegate.didReceiveResponse(response(200)),
            platform::UrlSessionDelegate::ResponseDisposition::allow);
  delegate.didReceiveData("one ");
  delegate.didReceiveData("two");
  EXPECT_TRUE(records().empty());
  std::size_t recordsAtCall = 0;
  client_.onCall = [&] { recordsAtCall = records().size(); };
  delegate.didComplete(std::nullopt);
  EXPECT_EQ(recordsAtCall, 1U) << "the record first, then the client";
  EXPECT_EQ(client_.calls, (Calls{"didReceive 200 not cached", "didLoad one ", "didLoad two",
                                  "didFinishLoading"}));
  ASSERT_EQ(records().size(), 1U);
  EXPECT_EQ(records()[0].statusCode, 200);
  EXPECT_EQ(records()[0].responseBody, Bytes{"one two"});
  EXPECT_EQ(records()[0].mimeType, "text/html");
  EXPECT_NEAR(records()[0].duration, 2, 1e-5);
}

TEST_F(ProbeNetworkInterceptorTest, RelaysAllOfABodyOfWhichItKeepsTheBeginning) {
  start();
  auto& delegate = *session().delegate;
  delegate.didReceiveResponse(response(200));
  std::string received;
  for (int chunk = 0; chunk < 10; ++chunk) {
    const std::string bytes(1'000, static_cast<char>('0' + chunk));
    delegate.didReceiveData(bytes);
    received += bytes;
    EXPECT_EQ(client_.calls.back(), "didLoad " + bytes);
  }
  delegate.didComplete(std::nullopt);
  EXPECT_EQ(records().at(0).responseBody->data, received.substr(0, 4'096));
}

TEST_F(ProbeNetworkInterceptorTest, RelaysAnError) {
  start();
  auto& delegate = *session().delegate;
  delegate.didReceiveResponse(response(200));
  delegate.didReceiveData("half");
  delegate.didComplete(platform::UrlError{"network", 5, "Connection closed"});
  EXPECT_EQ(client_.calls.back(), "didFailWithError network 5 Connection closed");
  EXPECT_EQ(records().at(0).errorDescription, "Connection closed");
  EXPECT_EQ(records().at(0).statusCode, 200);
  EXPECT_EQ(records().at(0).responseBody, Bytes{"half"});
}

TEST_F(ProbeNetworkInterceptorTest, RelaysAResponseThatIsNotHttp) {
  start();
  auto& delegate = *session().delegate;
  delegate.didReceiveResponse({*request_.url, "text/plain", std::nullopt});
  delegate.didComplete(std::nullopt);
  EXPECT_EQ(client_.calls, (Calls{"didReceive no HTTP not cached", "didFinishLoading"}));
  EXPECT_EQ(records().at(0).statusCode, std::nullopt);
}

TEST_F(ProbeNetworkInterceptorTest, FollowsRedirectsWithTheirMark) {
  start();
  auto& delegate = *session().delegate;
  platform::UrlRequest next;
  next.url = Url("https://shop.test/people");
  const platform::UrlRequest followed = delegate.willPerformHTTPRedirection(response(302), next);
  EXPECT_EQ(followed.url, next.url);
  EXPECT_FALSE(ProbeNetworkInterceptor::canInit(followed));
  EXPECT_EQ(client_.calls, Calls{"wasRedirectedTo https://shop.test/people by 302"});
  EXPECT_FALSE(ProbeNetworkInterceptor::canInit(client_.redirects.at(0)));

  delegate.didReceiveResponse(response(200));
  delegate.didComplete(std::nullopt);
  EXPECT_EQ(world_.urlLoading.sessions.size(), 1U) << "inside the same session";
  ASSERT_EQ(records().size(), 1U);
  EXPECT_EQ(records()[0].url, "https://shop.test/users") << "the original request";
  EXPECT_EQ(records()[0].statusCode, 200) << "the final response";
}

TEST_F(ProbeNetworkInterceptorTest, StopsItsTaskAndSession) {
  start();
  interceptor_->stopLoading();
  EXPECT_EQ(session().taskCancels, 1);
  EXPECT_EQ(session().invalidations, 1);
  interceptor_->stopLoading();
  EXPECT_EQ(session().taskCancels, 1) << "once";
  EXPECT_EQ(session().invalidations, 1);
  EXPECT_TRUE(records().empty());
  session().delegate->didComplete(platform::UrlError{"network", -999, "cancelled"});
  EXPECT_EQ(records().at(0).errorDescription, "cancelled") << "a task may still say so";
}

TEST_F(ProbeNetworkInterceptorTest, StopsWithoutHavingForwarded) {
  ProbeMockRules::shared().addRule(mockRule());
  start();
  interceptor_->stopLoading();
  EXPECT_EQ(records().size(), 1U);
}

TEST_F(ProbeNetworkInterceptorTest, ForwardsWithoutAConfigurationWhereThereIsNone) {
  world_.urlLoading.hasDefault = false;
  start();
  EXPECT_EQ(session().configuration, nullptr);
  EXPECT_TRUE(session().isResumed);
}

}  // namespace
}  // namespace tarnix::tests
