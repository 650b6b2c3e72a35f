#pragma once

#include <QObject>
#include <memory>

#include "platforms/qt6/network/exchange.h"

class QNetworkReply;
class QUrl;

namespace tarnix::qt6 {

/// How much of a response anybody looks at.
inline constexpr qint64 observedResponseBytes = 4'096;

/// Watches a reply that belongs to the application and leaves it as it is. Connected before the
/// application has the reply, it hears each signal first.
///
/// The body: applications read when and as much as they like, so that what is new in a reply is
/// only known from how much there was right before the toolkit added to it, which it does in its
/// internal calls. What is new is then looked at without being taken out.
///
/// A child of the reply: it lives in the reply's thread and goes with it.
class ReplyObserver : public QObject {
 public:
  static void attach(QNetworkReply& reply, std::unique_ptr<Exchange> exchange);

  ~ReplyObserver() override;

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  ReplyObserver(QNetworkReply& reply, std::unique_ptr<Exchange> exchange);
  void connectSignals();
  void redirected(const QUrl& url);
  void collectBody();
  /// The next bytes of the body that are in the reply and have not been handed on.
  QByteArray newBytes(qint64 count);
  void deliverResponse();
  /// Once: the exchange is over.
  void complete();

  QNetworkReply& reply_;
  /// Of the signal that ends it all.
  QMetaObject::Connection finished_;
  std::unique_ptr<Exchange> exchange_;
  /// The same once it is over. What is left of it, which is little, is let go of when the host no
  /// longer waits.
  std::unique_ptr<Exchange> ended_;
  /// Of the body, how much was in the reply when it was last looked at.
  qint64 available_ = 0;
  /// Of the body, how much has been handed on.
  qint64 observed_ = 0;
  /// The head of the response that the reply is at now has arrived.
  bool hasHead_ = false;
  bool isHeadDelivered_ = false;
};

}  // namespace tarnix::qt6
