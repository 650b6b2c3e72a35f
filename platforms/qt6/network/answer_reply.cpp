#include "platforms/qt6/network/answer_reply.h"

#include <QCoreApplication>
#include <QIODevice>
#include <QMetaObject>
#include <QNetworkCookie>
#include <QNetworkCookieJar>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "platforms/qt6/network/host_request.h"
#include "platforms/qt6/network/http_status.h"
#include "platforms/qt6/network/redirect_rules.h"
#include "platforms/qt6/network/request_hook.h"

namespace tarnix::qt6 {

AnswerReply::AnswerReply(const HostRequest& request, const Answer& answer)
    : QNetworkReply(request.manager),
      manager_(request.manager),
      requestedOperation_(request.operation),
      requestBody_(request.body),
      answer_(answer),
      redirectsLeft_(request.request.maximumRedirectsAllowed()) {
  setOperation(request.operation);
  setRequest(completed(request));
  setUrl(request.request.url());
  setAttribute(QNetworkRequest::ConnectionEncryptedAttribute, url().scheme() == "https");
  if (request.body != nullptr && !request.body->isSequential()) {
    uploadSize_ = request.body->size() - request.body->pos();
  }
  if (request.operation == QNetworkAccessManager::HeadOperation) {
    // A response to this method never has one.
    answer_.body.clear();
  }
  QIODevice::open(QIODevice::ReadOnly);
  if (isSynchronous()) {
    runAtOnce();
  } else {
    post(Stage::connecting);
  }
}

AnswerReply::~AnswerReply() = default;

bool AnswerReply::isSynchronous() const {
  return request().attribute(QNetworkRequest::SynchronousRequestAttribute).toBool();
}

void AnswerReply::post(Stage stage) {
  QMetaObject::invokeMethod(
      this, [this, stage] { run(stage); }, Qt::QueuedConnection);
}

void AnswerReply::run(Stage stage) {
  if (isFinished()) {
    return;
  }
  const bool isFailure = answer_.error.has_value() || !answer_.response->http;
  // The next event is on its way before the slots of the application run, as one from the network
  // would be.
  switch (stage) {
    case Stage::connecting:
      post(isFailure ? Stage::end : Stage::sent);
      Q_EMIT socketStartedConnecting();
      return;
    case Stage::sent: {
      post(Stage::head);
      const QPointer<AnswerReply> self(this);
      if (uploadSize_ > 0) {
        Q_EMIT uploadProgress(uploadSize_, uploadSize_);
      }
      if (self != nullptr) {
        Q_EMIT requestSent();
      }
      return;
    }
    case Stage::head:
      showHead();
      if (followsRedirects()) {
        redirect();
        return;
      }
      post(Stage::body);
      Q_EMIT metaDataChanged();
      return;
    case Stage::body:
      post(Stage::end);
      unread_ = answer_.body;
      received_ = unread_.size();
      if (received_ > 0) {
        Q_EMIT readyRead();
      }
      return;
    case Stage::end:
      break;
  }
  if (isFailure) {
    fail(UnknownNetworkError, QString::fromStdString(answer_.error->localizedDescription));
    return;
  }
  const int status = static_cast<int>(answer_.response->http->statusCode);
  if (errorOfHttpStatus(status) != NoError) {
    fail(errorOfHttpStatus(status), errorTextOfHttpStatus(url(), status));
  } else {
    finish();
  }
}

/// The same without events and, since nobody can be connected yet, without signals.
void AnswerReply::runAtOnce() {
  const QSignalBlocker silence(this);
  if (answer_.error || !answer_.response->http) {
    fail(UnknownNetworkError, QString::fromStdString(answer_.error->localizedDescription));
    return;
  }
  showHead();
  if (followsRedirects()) {
    redirect();
    return;
  }
  unread_ = answer_.body;
  received_ = unread_.size();
  run(Stage::end);
}

void AnswerReply::showHead() {
  const platform::HttpResponseHead& head = *answer_.response->http;
  const int status = static_cast<int>(head.statusCode);
  setAttribute(QNetworkRequest::HttpStatusCodeAttribute, status);
  setAttribute(QNetworkRequest::HttpReasonPhraseAttribute, reasonPhraseOf(status));
  setAttribute(QNetworkRequest::HttpPipeliningWasUsedAttribute, false);
  setAttribute(QNetworkRequest::Http2WasUsedAttribute, false);
  if (head.allHeaderFields) {
    for (const auto& [name, value] : *head.allHeaderFields) {
      setRawHeader(QByteArray::fromStdString(name), QByteArray::fromStdString(value));
    }
  }
  keepCookies();
  // The toolkit follows this one, and does not name its target when it must not.
  constexpr int useProxy = 305;
  if (isRedirectStatus(status) && status != useProxy && !redirectTarget().isEmpty() &&
      !followsRedirects()) {
    setAttribute(QNetworkRequest::RedirectionTargetAttribute,
                 QUrl::fromEncoded(rawHeader("Location")));
  }
}

void AnswerReply::keepCookies() {
  const QVariant control =
      request().attribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Automatic);
  const QByteArray header = rawHeader("Set-Cookie");
  if (header.isEmpty() || manager_ == nullptr || control.toInt() != QNetworkRequest::Automatic) {
    return;
  }
  if (QNetworkCookieJar* const jar = manager_->cookieJar()) {
    jar->setCookiesFromUrl(QNetworkCookie::parseCookies(header), url());
  }
}

QUrl AnswerReply::redirectTarget() const {
  const QByteArray location = rawHeader("Location");
  return location.isEmpty() ? QUrl() : url().resolved(QUrl::fromEncoded(location));
}

bool AnswerReply::followsRedirects() const {
  return isRedirectStatus(static_cast<int>(answer_.response->http->statusCode)) &&
         redirect_rules::policyOf(request()) != QNetworkRequest::ManualRedirectPolicy &&
         !redirectTarget().isEmpty();
}

void AnswerReply::redirect() {
  const QPointer<AnswerReply> self(this);
  Q_EMIT metaDataChanged();
  if (self == nullptr || isFinished()) {
    return;
  }
  target_ = redirectTarget();
  if (redirectsLeft_ <= 0) {
    fail(TooManyRedirectsError, QCoreApplication::translate("QHttp", "Too many redirects"));
    return;
  }
  if (const redirect_rules::Refusal refusal =
          redirect_rules::refusalOf(target_, url(), redirect_rules::policyOf(request()));
      refusal.error != NoError) {
    fail(refusal.error, refusal.text);
    return;
  }
  if (target_.fragment().isEmpty()) {
    target_.setFragment(url().fragment());
  }
  const int status = static_cast<int>(answer_.response->http->statusCode);
  setOperation(operationAfterRedirect(operation(), status));
  setUrl(target_);
  const bool asksFirst =
      redirect_rules::policyOf(request()) == QNetworkRequest::UserVerifiedRedirectPolicy;
  if (isSynchronous() && !asksFirst) {
    forgetHeaders();
    followRedirect();
    return;
  }
  if (asksFirst) {
    connect(this, &QNetworkReply::redirectAllowed, this, [this] {
      if (!next_.isThere() && !isFinished()) {
        followRedirectLater();
      }
    });
  } else {
    followRedirectLater();
  }
  Q_EMIT redirected(target_);
}

void AnswerReply::followRedirectLater() {
  forgetHeaders();
  QMetaObject::invokeMethod(
      this, [this] { followRedirect(); }, Qt::QueuedConnection);
}

void AnswerReply::followRedirect() {
  if (next_.isThere() || isFinished() || manager_ == nullptr) {
    return;
  }
  QIODevice* const body =
      operation() == QNetworkAccessManager::GetOperation ? nullptr : requestBody_.data();
  QNetworkRequest followed =
      redirect_rules::requestTo(target_, request(), operation(), body != nullptr);
  followed.setMaximumRedirectsAllowed(redirectsLeft_ - 1);
  QNetworkReply* const next =
      request_hook::createRequest({manager_.data(), operation(), followed, body});
  if (next == nullptr) {
    return;
  }
  next_.take(*next);
  adopt(*next);
}

void AnswerReply::adopt(QNetworkReply& next) {
  const auto end = [this, &next] {
    if (next.attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid()) {
      copyHeadOf(next);
    }
    unread_ += next.readAll();
    received_ = std::max<qint64>(received_, unread_.size());
    if (next.error() != NoError) {
      fail(next.error(), next.errorString());
    } else {
      finish();
    }
  };
  if (next.isFinished()) {
    end();
    return;
  }
  connect(&next, &QNetworkReply::socketStartedConnecting, this,
          &QNetworkReply::socketStartedConnecting);
  connect(&next, &QNetworkReply::requestSent, this, &QNetworkReply::requestSent);
  connect(&next, &QNetworkReply::encrypted, this, &QNetworkReply::encrypted);
  connect(&next, &QNetworkReply::sslErrors, this, &QNetworkReply::sslErrors);
  // What a reply reports at its end is reported at ours.
  connect(&next, &QNetworkReply::uploadProgress, this, [this, &next](qint64 sent, qint64 total) {
    if (!isFinished() && next.isRunning()) {
      Q_EMIT uploadProgress(sent, total);
    }
  });
  connect(&next, &QNetworkReply::downloadProgress, this, [this, &next](qint64 now, qint64 total) {
    if (!isFinished() && next.isRunning()) {
      Q_EMIT downloadProgress(now, total);
    }
  });
  connect(&next, &QNetworkReply::redirected, this, [this, &next](const QUrl& url) {
    forgetHeaders();
    setUrl(url);
    setOperation(next.operation());
    Q_EMIT redirected(url);
  });
  connect(this, &QNetworkReply::redirectAllowed, &next, &QNetworkReply::redirectAllowed);
  connect(&next, &QNetworkReply::metaDataChanged, this, [this, &next] {
    copyHeadOf(next);
    Q_EMIT metaDataChanged();
  });
  connect(&next, &QNetworkReply::readyRead, this, [this, &next] {
    const QByteArray bytes = next.readAll();
    unread_ += bytes;
    received_ += bytes.size();
    Q_EMIT readyRead();
  });
  connect(&next, &QNetworkReply::finished, this, end);
}

void AnswerReply::forgetHeaders() {
  for (const QByteArray& name : rawHeaderList()) {
    setRawHeader(name, QByteArray());
  }
}

void AnswerReply::copyHeadOf(const QNetworkReply& next) {
  forgetHeaders();
  for (int code = 0; code < QNetworkRequest::User; ++code) {
    const auto attribute = static_cast<QNetworkRequest::Attribute>(code);
    // The buffer belongs to the other reply.
    if (attribute != QNetworkRequest::DownloadBufferAttribute) {
      setAttribute(attribute, next.attribute(attribute));
    }
  }
  for (const auto& [name, value] : next.rawHeaderPairs()) {
    setRawHeader(name, value);
  }
}

void AnswerReply::fail(NetworkError code, const QString& text) {
  if (error() != NoError) {
    // Aborted from within the slot that hears of the first error, which stays the only one.
    finish();
    return;
  }
  setError(code, text);
  const QPointer<AnswerReply> self(this);
  Q_EMIT errorOccurred(code);
  if (self != nullptr && !isFinished()) {
    finish();
  }
}

void AnswerReply::finish() {
  const QPointer<AnswerReply> self(this);
  setFinished(true);
  const QVariant length = header(QNetworkRequest::ContentLengthHeader);
  Q_EMIT downloadProgress(received_, length.isValid() ? length.toLongLong() : received_);
  // Not when a redirect has made another method of it.
  if (self != nullptr && uploadSize_ >= 0 && operation() == requestedOperation_) {
    Q_EMIT uploadProgress(0, 0);
  }
  if (self != nullptr) {
    Q_EMIT readChannelFinished();
  }
  if (self != nullptr) {
    Q_EMIT finished();
  }
}

void AnswerReply::cancel() {
  next_.abort();
  const QPointer<AnswerReply> self(this);
  QNetworkReply::close();
  if (self != nullptr && !isFinished()) {
    fail(OperationCanceledError,
         QCoreApplication::translate("QNetworkReply", "Operation canceled"));
  }
}

void AnswerReply::abort() {
  if (!isFinished()) {
    cancel();
  }
}

void AnswerReply::close() {
  if (isFinished()) {
    QNetworkReply::close();
  } else {
    cancel();
  }
}

void AnswerReply::ignoreSslErrors() { next_.ignoreSslErrors(); }

void AnswerReply::ignoreSslErrorsImplementation(const QList<QSslError>& errors) {
  next_.ignoreSslErrors(errors);
}

void AnswerReply::sslConfigurationImplementation(QSslConfiguration& configuration) const {
  configuration = next_.sslConfiguration(request().sslConfiguration());
}

qint64 AnswerReply::bytesAvailable() const {
  return QNetworkReply::bytesAvailable() + unread_.size();
}

bool AnswerReply::canReadLine() const {
  return QNetworkReply::canReadLine() || unread_.contains('\n');
}

qint64 AnswerReply::readData(char* data, qint64 maximumSize) {
  if (unread_.isEmpty()) {
    // The end once there is nothing more to come, nothing yet before.
    return isFinished() ? -1 : 0;
  }
  const qint64 count = std::min<qint64>(maximumSize, unread_.size());
  std::copy_n(unread_.constData(), count, data);
  unread_.remove(0, count);
  return count;
}

}  // namespace tarnix::qt6
