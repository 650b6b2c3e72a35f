#include "platforms/qt6/network/exchange.h"

#include <QIODevice>
#include <utility>

#include "platforms/qt6/network/host_request.h"
#include "platforms/qt6/network/request_hook.h"

namespace tarnix::qt6 {

/// Makes the request as if nobody had stood in the way. Good for the duration of the call that made
/// the request; afterwards only to tell the delegate.
class Exchange::ToolkitLoad : public platform::UrlLoad {
 public:
  explicit ToolkitLoad(const HostRequest& request) : request_(&request) {}

  void resume(platform::UrlSessionDelegate& delegate) override {
    if (request_ != nullptr && reply_ == nullptr) {
      delegate_ = &delegate;
      reply_ = request_hook::callToolkit(*request_);
    }
  }
  // The reply is the application's, which is the only one to cancel it.
  void cancel() override { delegate_ = nullptr; }

  void callEnds() { request_ = nullptr; }
  QNetworkReply* reply() const { return reply_; }
  platform::UrlSessionDelegate* delegate() const { return delegate_; }

 private:
  const HostRequest* request_;
  QNetworkReply* reply_ = nullptr;
  platform::UrlSessionDelegate* delegate_ = nullptr;
};

Exchange::Exchange() = default;

Exchange::~Exchange() { stop(); }

void Exchange::start(platform::UrlProtocolClass& protocolClass, platform::UrlRequest described,
                     const HostRequest& request) {
  if (described.url) {
    url_ = {request.request.url(), described.url->absoluteString()};
  }
  load_ = std::make_shared<ToolkitLoad>(request);
  described.load = load_;
  addBody(described, request);
  protocol_ = protocolClass.make(protocolClass.canonicalRequest(std::move(described)), *this);
  protocol_->startLoading();
  load_->callEnds();
}

void Exchange::addBody(platform::UrlRequest& described, const HostRequest& request) {
  if (request.body == nullptr) {
    return;
  }
  if (request.body->isSequential()) {
    const bool isStreamed =
        request.request.attribute(QNetworkRequest::DoNotBufferUploadDataAttribute).toBool();
    uploadTap_ = std::make_shared<UploadTap>(*request.body, isStreamed);
    described.httpBodyStream = uploadTap_;
  } else if (const std::optional<QByteArray> beginning = beginningOfBody(*request.body)) {
    described.httpBody = beginning->toStdString();
  }
}

QNetworkReply* Exchange::reply() const { return load_ == nullptr ? nullptr : load_->reply(); }

void Exchange::didReceiveResponse(platform::UrlResponse response) {
  if (platform::UrlSessionDelegate* const delegate = load_->delegate()) {
    // The answer is the application's to give, with its own reply.
    static_cast<void>(delegate->didReceiveResponse(std::move(response)));
  }
}

void Exchange::didReceiveData(std::string_view data) {
  if (platform::UrlSessionDelegate* const delegate = load_->delegate()) {
    delegate->didReceiveData(data);
  }
}

void Exchange::willPerformHTTPRedirection(const platform::UrlResponse& response,
                                          const platform::UrlRequest& newRequest) {
  if (platform::UrlSessionDelegate* const delegate = load_->delegate()) {
    static_cast<void>(delegate->willPerformHTTPRedirection(response, newRequest));
  }
}

void Exchange::didComplete(const std::optional<platform::UrlError>& error) {
  if (platform::UrlSessionDelegate* const delegate = load_->delegate()) {
    delegate->didComplete(error);
  }
}

void Exchange::stop() {
  if (!std::exchange(isStopped_, true) && protocol_ != nullptr) {
    protocol_->stopLoading();
  }
}

void Exchange::didReceive(const platform::UrlResponse& response, platform::CacheStoragePolicy) {
  if (reply() == nullptr) {
    answer_.response = response;
  }
}

void Exchange::didLoad(std::string_view data) {
  if (reply() == nullptr) {
    answer_.body.append(data.data(), static_cast<qsizetype>(data.size()));
  }
}

void Exchange::didFinishLoading() { answer_.isComplete = true; }

void Exchange::didFailWithError(const platform::UrlError& error) {
  answer_.error = error;
  answer_.isComplete = true;
}

void Exchange::wasRedirectedTo(const platform::UrlRequest&, const platform::UrlResponse&) {}

}  // namespace tarnix::qt6
