#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "probe/platform/url_protocol_client.h"

namespace tarnix::fakes {

/// Writes down what a protocol hands to the host, one line a call.
class FakeUrlProtocolClient : public platform::UrlProtocolClient {
 public:
  void didReceive(const platform::UrlResponse& response,
                  platform::CacheStoragePolicy policy) override {
    responses.push_back(response);
    note("didReceive " +
         (response.http ? std::to_string(response.http->statusCode) : std::string("no HTTP")) +
         (policy == platform::CacheStoragePolicy::notAllowed ? " not cached" : " cached"));
  }
  void didLoad(std::string_view data) override { note("didLoad " + std::string(data)); }
  void didFinishLoading() override { note("didFinishLoading"); }
  void didFailWithError(const platform::UrlError& error) override {
    note("didFailWithError " + error.domain + " " + std::to_string(error.code) + " " +
         error.localizedDescription);
  }
  void wasRedirectedTo(const platform::UrlRequest& request,
                       const platform::UrlResponse& response) override {
    redirects.push_back(request);
    note("wasRedirectedTo " + request.url->absoluteString() + " by " +
         std::to_string(response.http->statusCode));
  }

  std::vector<std::string> calls;
  std::vector<platform::UrlResponse> responses;
  std::vector<platform::UrlRequest> redirects;
  /// Runs inside each call.
  std::function<void()> onCall;

 private:
  void note(std::string call) {
    calls.push_back(std::move(call));
    if (onCall) {
      onCall();
    }
  }
};

}  // namespace tarnix::fakes
