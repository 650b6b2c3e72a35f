#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "probe/link/timestamp.h"
#include "probe/model/transferable_network_request.h"
#include "probe/network/probe_mock_rules.h"
#include "probe/platform/url_loading.h"

namespace tarnix {

/// Stands between the host and the network: each HTTP request of the host comes here, is answered
/// by a mock rule, failed by an intercept rule, or forwarded, and is recorded.
///
/// One instance a request. Everything runs on the thread that the host makes the request on.
class ProbeNetworkInterceptor : public platform::UrlProtocol, private platform::UrlSessionDelegate {
 public:
  /// Marks requests that the probe itself sends, so that it never claims its own traffic.
  static constexpr const char* handledProperty = "com.tarnix.probe.handled";

  /// Puts the interceptor in front of everything that the host loads, and says so. Main thread;
  /// may be called again.
  static void install();

  /// What stands in the lists of protocols: one object for the process.
  static platform::UrlProtocolClass& protocolClass();

  static bool canInit(const platform::UrlRequest& request);
  static platform::UrlRequest canonicalRequest(platform::UrlRequest request) { return request; }

  ProbeNetworkInterceptor(platform::UrlRequest request, platform::UrlProtocolClient& client);
  ~ProbeNetworkInterceptor() override;

  void startLoading() override;
  void stopLoading() override;

 private:
  void serveMock(const ProbeMockRules::MockRule& rule);
  void forward();
  void keepData(std::string_view data);
  void recordRequest(const std::optional<platform::UrlError>& error);

  ResponseDisposition didReceiveResponse(platform::UrlResponse response) override;
  void didReceiveData(std::string_view data) override;
  platform::UrlRequest willPerformHTTPRedirection(const platform::UrlResponse& response,
                                                  const platform::UrlRequest& newRequest) override;
  void didComplete(const std::optional<platform::UrlError>& error) override;

  platform::UrlRequest request_;
  platform::UrlProtocolClient& client_;
  std::unique_ptr<platform::UrlSession> internalSession_;
  std::unique_ptr<platform::UrlSessionDataTask> internalTask_;
  /// The beginning of the body, as far as it is recorded.
  std::string responseData_;
  std::optional<platform::UrlResponse> responseObject_;
  Timestamp startTime_;
  /// The record as far as the request alone makes it up. Null until that has been done.
  std::shared_ptr<TransferableNetworkRequest> begunRecord_;
};

}  // namespace tarnix
