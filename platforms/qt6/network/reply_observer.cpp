#include "platforms/qt6/network/reply_observer.h"

#include <QEvent>
#include <QNetworkReply>
#include <QSharedPointer>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "platforms/qt6/network/reply_text.h"

namespace tarnix::qt6 {

namespace {

/// Nothing of ours may end up in the slots of the application, which know no exceptions.
template <class Step>
void contain(Step step) noexcept {
  try {
    step();
  } catch (...) {
    // Memory ran out: the record is incomplete or missing.
  }
}

}  // namespace

void ReplyObserver::attach(QNetworkReply& reply, std::unique_ptr<Exchange> exchange) {
  if (reply.isFinished()) {
    // Synchronous: everything is there.
    ReplyObserver observer(reply, std::move(exchange));
    observer.hasHead_ = hasHttpStatus(reply);
    observer.collectBody();
    observer.complete();
    return;
  }
  auto* const observer = new ReplyObserver(reply, std::move(exchange));
  observer->connectSignals();
  observer->setParent(&reply);
  reply.installEventFilter(observer);
}

ReplyObserver::ReplyObserver(QNetworkReply& reply, std::unique_ptr<Exchange> exchange)
    : reply_(reply), exchange_(std::move(exchange)) {}

ReplyObserver::~ReplyObserver() {
  if (exchange_ != nullptr) {
    // The reply goes before it has come to its end; nothing can be asked of it any more.
    contain([this] { exchange_->didComplete(cancellation()); });
  }
}

void ReplyObserver::connectSignals() {
  connect(
      &reply_, &QNetworkReply::metaDataChanged, this, [this] { hasHead_ = true; },
      Qt::DirectConnection);
  connect(
      &reply_, &QNetworkReply::redirected, this,
      [this](const QUrl& url) { contain([&] { redirected(url); }); }, Qt::DirectConnection);
  connect(
      &reply_, &QNetworkReply::readyRead, this, [this] { contain([this] { collectBody(); }); },
      Qt::DirectConnection);
  finished_ = connect(
      &reply_, &QNetworkReply::finished, this,
      [this] {
        contain([this] { collectBody(); });
        contain([this] { complete(); });
        // Nothing comes after this. The reply takes the observer along when it goes: the
        // application, whose turn it is now, need not wait for that.
      },
      Qt::DirectConnection);
}

bool ReplyObserver::eventFilter(QObject* watched, QEvent* event) {
  if (watched != &reply_ || exchange_ == nullptr) {
    return false;
  }
  if (event->type() == QEvent::MetaCall) {
    if (!finished_) {
      // The application has cut all connections of the reply, ours with its own.
      connectSignals();
    }
    if (UploadTap* const tap = exchange_->uploadTap()) {
      contain([tap] { tap->toolkitReads(); });
    }
    // Less than before: the application has read. More: the toolkit has added something and will
    // say so together with what it adds next.
    if (observed_ < observedResponseBytes) {
      available_ = std::min(available_, reply_.bytesAvailable());
    }
  } else if (event->type() == QEvent::DeferredDelete && reply_.isFinished()) {
    // It has come to its end without saying so to us. The reply takes this along.
    contain([this] { complete(); });
  }
  return false;
}

void ReplyObserver::redirected(const QUrl& url) {
  if (exchange_ == nullptr) {
    return;
  }
  platform::UrlRequest next;
  next.url = Url(url.toEncoded().toStdString());
  exchange_->willPerformHTTPRedirection(responseOf(reply_, exchange_->url()), next);
  // What comes now belongs to another response; that of the redirect is not the exchange's.
  hasHead_ = false;
  isHeadDelivered_ = false;
}

void ReplyObserver::collectBody() {
  if (exchange_ == nullptr || observed_ >= observedResponseBytes || !reply_.isOpen()) {
    return;
  }
  const qint64 available = reply_.bytesAvailable();
  const qint64 isNew = available - available_;
  if (isNew > 0) {
    const QByteArray bytes = newBytes(std::min(isNew, observedResponseBytes - observed_));
    hasHead_ = true;
    deliverResponse();
    exchange_->didReceiveData({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    observed_ += bytes.size();
  }
  available_ = available;
}

QByteArray ReplyObserver::newBytes(qint64 count) {
  // Where the length of the body was announced, all of it is loaded into one buffer that can be
  // had. Looking there moves nothing; looking ahead in the reply moves bytes into a buffer that
  // goes when the application closes the reply.
  const QVariant buffer = reply_.attribute(QNetworkRequest::DownloadBufferAttribute);
  if (const auto whole = buffer.value<QSharedPointer<char>>()) {
    return {whole.data() + observed_, count};
  }
  return reply_.peek(available_ + count).mid(available_);
}

void ReplyObserver::deliverResponse() {
  if (hasHead_ && !std::exchange(isHeadDelivered_, true)) {
    exchange_->didReceiveResponse(responseOf(reply_, exchange_->url()));
  }
}

void ReplyObserver::complete() {
  if (exchange_ == nullptr) {
    return;
  }
  const std::unique_ptr<Exchange> exchange = std::move(exchange_);
  if (hasHead_ && !isHeadDelivered_) {
    exchange->didReceiveResponse(responseOf(reply_, exchange->url()));
  }
  exchange->didComplete(transportErrorOf(reply_));
  exchange->stop();
}

}  // namespace tarnix::qt6
