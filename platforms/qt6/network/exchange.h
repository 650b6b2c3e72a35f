#pragma once

#include <QByteArray>
#include <memory>
#include <optional>
#include <string_view>

#include "platforms/qt6/network/reply_text.h"
#include "platforms/qt6/network/upload_tap.h"
#include "platforms/qt6/shared/url_load.h"
#include "probe/platform/url_protocol.h"

class QNetworkReply;

namespace tarnix::qt6 {

struct HostRequest;

/// What a protocol answered in the place of the network.
struct Answer {
  std::optional<platform::UrlResponse> response;
  QByteArray body;
  std::optional<platform::UrlError> error;
  /// Nothing more comes.
  bool isComplete = false;
};

/// One request of the host that a protocol has claimed: what keeps the protocol, is its client, and
/// performs the request by the toolkit's own means when it is asked to. Thread of the request.
///
/// When the request is performed the application gets the toolkit's own reply, and what the
/// protocol hands on of it is what the application sees there already.
class Exchange : private platform::UrlProtocolClient {
 public:
  Exchange();
  ~Exchange() override;
  Exchange(const Exchange&) = delete;
  Exchange& operator=(const Exchange&) = delete;

  /// Lets a protocol of `protocolClass` load the request. Afterwards there is either a reply of the
  /// toolkit or an answer.
  void start(platform::UrlProtocolClass& protocolClass, platform::UrlRequest described,
             const HostRequest& request);

  /// Null when the toolkit has no part in this.
  QNetworkReply* reply() const;
  const Answer& answer() const { return answer_; }
  /// Of the request, or of what it was redirected to.
  EncodedUrl& url() { return url_; }
  /// Null when the body is not one that is read only once.
  UploadTap* uploadTap() const { return uploadTap_.get(); }

  /// What the toolkit's reply has come to. Nothing once the protocol has stopped.
  void didReceiveResponse(platform::UrlResponse response);
  void didReceiveData(std::string_view data);
  void willPerformHTTPRedirection(const platform::UrlResponse& response,
                                  const platform::UrlRequest& newRequest);
  void didComplete(const std::optional<platform::UrlError>& error);

  /// The host wants nothing more of it. Any number of times.
  void stop();

 private:
  class ToolkitLoad;

  void addBody(platform::UrlRequest& described, const HostRequest& request);

  void didReceive(const platform::UrlResponse& response,
                  platform::CacheStoragePolicy policy) override;
  void didLoad(std::string_view data) override;
  void didFinishLoading() override;
  void didFailWithError(const platform::UrlError& error) override;
  void wasRedirectedTo(const platform::UrlRequest& request,
                       const platform::UrlResponse& redirectResponse) override;

  EncodedUrl url_;
  std::shared_ptr<UploadTap> uploadTap_;
  std::shared_ptr<ToolkitLoad> load_;
  Answer answer_;
  bool isStopped_ = false;
  // Goes first: it may call the others while it does.
  std::unique_ptr<platform::UrlProtocol> protocol_;
};

}  // namespace tarnix::qt6
