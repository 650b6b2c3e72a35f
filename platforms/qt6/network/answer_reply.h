#pragma once

#include <QByteArray>
#include <QList>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPointer>
#include <QSslConfiguration>
#include <QSslError>

#include "platforms/qt6/network/exchange.h"
#include "platforms/qt6/network/redirected_reply.h"

namespace tarnix::qt6 {

struct HostRequest;

/// A reply whose content a protocol has given: to the application it behaves as the toolkit's own
/// HTTP reply does whose server has answered at once. The same signals in the same order, each
/// group from an event of its own, so that an application may run a loop inside a slot; complete on
/// return for a synchronous request; redirects followed by the request's policy; cookies kept.
///
/// It has no class information of its own: what the application sees of its type is a
/// QNetworkReply. Thread of the request.
class AnswerReply : public QNetworkReply {
 public:
  AnswerReply(const HostRequest& request, const Answer& answer);
  ~AnswerReply() override;
  AnswerReply(const AnswerReply&) = delete;
  AnswerReply& operator=(const AnswerReply&) = delete;

  void abort() override;
  void close() override;
  bool isSequential() const override { return true; }
  qint64 bytesAvailable() const override;
  bool canReadLine() const override;
  qint64 size() const override { return bytesAvailable(); }
  void ignoreSslErrors() override;

 protected:
  qint64 readData(char* data, qint64 maximumSize) override;
  void ignoreSslErrorsImplementation(const QList<QSslError>& errors) override;
  void sslConfigurationImplementation(QSslConfiguration& configuration) const override;

 private:
  enum class Stage { connecting, sent, head, body, end };

  bool isSynchronous() const;
  void post(Stage stage);
  void run(Stage stage);
  void runAtOnce();

  void showHead();
  void keepCookies();
  QUrl redirectTarget() const;
  bool followsRedirects() const;
  void redirect();
  void followRedirectLater();
  void followRedirect();
  void adopt(QNetworkReply& next);
  void forgetHeaders();
  void copyHeadOf(const QNetworkReply& next);

  void fail(NetworkError code, const QString& text);
  void finish();
  void cancel();

  QPointer<QNetworkAccessManager> manager_;
  const QNetworkAccessManager::Operation requestedOperation_;
  QPointer<QIODevice> requestBody_;
  qint64 uploadSize_ = -1;
  Answer answer_;
  /// What the application has not read yet.
  QByteArray unread_;
  qint64 received_ = 0;
  int redirectsLeft_;
  QUrl target_;
  /// Its content becomes ours.
  RedirectedReply next_{*this};
};

}  // namespace tarnix::qt6
