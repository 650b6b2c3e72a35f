#pragma once

#include <QList>
#include <QNetworkReply>
#include <QPointer>
#include <QSslConfiguration>
#include <QSslError>

namespace tarnix::qt6 {

/// The reply to the request that a redirect led to, behind the one that the application has. It is
/// owned and has no parent: a manager that goes deletes all replies among its children and theirs,
/// each once. What the application has said of certificates holds for it too, whenever it comes.
class RedirectedReply {
 public:
  /// `front` is the application's reply, which no longer hears of this one once it is let go.
  explicit RedirectedReply(QNetworkReply& front) : front_(front) {}
  ~RedirectedReply();
  RedirectedReply(const RedirectedReply&) = delete;
  RedirectedReply& operator=(const RedirectedReply&) = delete;

  /// Once: no redirect has been followed before.
  void take(QNetworkReply& reply);
  bool isThere() const { return reply_ != nullptr; }
  void abort();

  void ignoreSslErrors();
  void ignoreSslErrors(const QList<QSslError>& errors);
  /// `unredirected` while no redirect has been followed.
  QSslConfiguration sslConfiguration(const QSslConfiguration& unredirected) const;

 private:
  QNetworkReply& front_;
  /// Null before the redirect, and when somebody else has deleted it.
  QPointer<QNetworkReply> reply_;
  bool ignoresSslErrors_ = false;
  QList<QSslError> ignoredSslErrors_;
};

}  // namespace tarnix::qt6
