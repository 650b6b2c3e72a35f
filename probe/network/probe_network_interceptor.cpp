#include "probe/network/probe_network_interceptor.h"

#include <utility>

#include "probe/model/mime_type.h"
#include "probe/network/network_recorder.h"
#include "probe/network/probe_intercept_rules.h"
#include "probe/network/session_configuration_hook.h"
#include "probe/platform/diagnostics.h"
#include "probe/platform/now.h"
#include "probe/platform/text.h"

namespace tarnix {
namespace {

constexpr const char* errorDomain = "TarnixProbe";
constexpr std::int64_t errorCode = -1;
constexpr const char* urlOfRequestsWithoutOne = "https://mock";

class InterceptorClass : public platform::UrlProtocolClass {
 public:
  bool canInit(const platform::UrlRequest& request) override {
    return ProbeNetworkInterceptor::canInit(request);
  }
  platform::UrlRequest canonicalRequest(platform::UrlRequest request) override {
    return ProbeNetworkInterceptor::canonicalRequest(std::move(request));
  }
  std::unique_ptr<platform::UrlProtocol> make(platform::UrlRequest request,
                                              platform::UrlProtocolClient& client) override {
    return std::make_unique<ProbeNetworkInterceptor>(std::move(request), client);
  }
};

void mark(platform::UrlRequest& request) {
  request.properties[ProbeNetworkInterceptor::handledProperty] = {true};
}

platform::UrlResponse responseOf(const ProbeMockRules::MockRule& rule, Url url) {
  std::optional<std::string> mimeType;
  for (const auto& [name, value] : rule.responseHeaders) {
    if (isSameHeaderName(name, "Content-Type")) {
      mimeType = mimeTypeIn(value);
    }
  }
  return {std::move(url), std::move(mimeType),
          platform::HttpResponseHead{rule.statusCode, "HTTP/1.1", rule.responseHeaders}};
}

}  // namespace

void ProbeNetworkInterceptor::install() {
  if (platform::UrlLoading* const urlLoading = platform::current().urlLoading) {
    urlLoading->registerClass(protocolClass());
  }
  session_configuration_hook::installSwizzle();
  platform::writeStandardError("[TarnixProbe] Network interceptor installed\n");
}

platform::UrlProtocolClass& ProbeNetworkInterceptor::protocolClass() {
  static InterceptorClass& theClass = *new InterceptorClass;
  return theClass;
}

bool ProbeNetworkInterceptor::canInit(const platform::UrlRequest& request) {
  const std::optional<std::string_view> scheme = request.url ? request.url->scheme() : std::nullopt;
  if (!scheme) {
    return false;
  }
  const std::string lowerCase = platform::lowercased(*scheme);
  return (lowerCase == "http" || lowerCase == "https") &&
         !request.properties.contains(handledProperty);
}

ProbeNetworkInterceptor::ProbeNetworkInterceptor(platform::UrlRequest request,
                                                 platform::UrlProtocolClient& client)
    : request_(std::move(request)), client_(client) {}

ProbeNetworkInterceptor::~ProbeNetworkInterceptor() = default;

void ProbeNetworkInterceptor::startLoading() {
  startTime_ = platform::now();
  responseData_.clear();
  if (const auto mockRule = ProbeMockRules::shared().findMatch(request_)) {
    serveMock(*mockRule);
    return;
  }
  if (const auto interceptRule = ProbeInterceptRules::shared().findMatch(request_)) {
    const platform::UrlError error{errorDomain, errorCode,
                                   "Request intercepted by rule: " + interceptRule->name};
    client_.didFailWithError(error);
    recordRequest(error);
    return;
  }
  forward();
}

void ProbeNetworkInterceptor::serveMock(const ProbeMockRules::MockRule& rule) {
  responseObject_ = responseOf(rule, request_.url.value_or(Url(urlOfRequestsWithoutOne)));
  client_.didReceive(*responseObject_, platform::CacheStoragePolicy::notAllowed);
  client_.didLoad(rule.responseBody);
  client_.didFinishLoading();
  keepData(rule.responseBody);
  recordRequest(std::nullopt);
}

void ProbeNetworkInterceptor::forward() {
  mark(request_);
  internalSession_ = platform::current().urlLoading->makeSession(
      session_configuration_hook::internalConfig(), *this);
  internalTask_ = internalSession_->dataTask(request_);
  internalTask_->resume();
  // While the network is at it, so that the host waits the less when the response is there.
  if (begunRecord_ == nullptr) {
    begunRecord_ = network_recorder::begin(request_);
  }
}

void ProbeNetworkInterceptor::stopLoading() {
  if (internalTask_) {
    internalTask_->cancel();
    internalTask_.reset();
  }
  if (internalSession_) {
    internalSession_->invalidateAndCancel();
    internalSession_.reset();
  }
}

platform::UrlSessionDelegate::ResponseDisposition ProbeNetworkInterceptor::didReceiveResponse(
    platform::UrlResponse response) {
  client_.didReceive(response, platform::CacheStoragePolicy::notAllowed);
  if (response.http) {
    responseObject_ = std::move(response);
  }
  return ResponseDisposition::allow;
}

void ProbeNetworkInterceptor::didReceiveData(std::string_view data) {
  keepData(data);
  client_.didLoad(data);
}

platform::UrlRequest ProbeNetworkInterceptor::willPerformHTTPRedirection(
    const platform::UrlResponse& response, const platform::UrlRequest& newRequest) {
  platform::UrlRequest followed = newRequest;
  mark(followed);
  client_.wasRedirectedTo(followed, response);
  return followed;
}

void ProbeNetworkInterceptor::didComplete(const std::optional<platform::UrlError>& error) {
  recordRequest(error);
  if (error) {
    client_.didFailWithError(*error);
  } else {
    client_.didFinishLoading();
  }
}

void ProbeNetworkInterceptor::keepData(std::string_view data) {
  responseData_ += data.substr(0, responseBodyLimit - responseData_.size());
}

void ProbeNetworkInterceptor::recordRequest(const std::optional<platform::UrlError>& error) {
  if (begunRecord_ == nullptr) {
    begunRecord_ = network_recorder::begin(request_);
  }
  network_recorder::finish(
      std::move(begunRecord_),
      {request_, startTime_, std::move(responseObject_), std::move(responseData_), error});
}

}  // namespace tarnix
