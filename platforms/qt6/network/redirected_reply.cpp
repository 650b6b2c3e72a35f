#include "platforms/qt6/network/redirected_reply.h"

namespace tarnix::qt6 {

RedirectedReply::~RedirectedReply() {
  if (reply_ != nullptr) {
    reply_->disconnect(&front_);
    delete reply_.data();
  }
}

void RedirectedReply::take(QNetworkReply& reply) {
  reply.setParent(nullptr);
  reply_ = &reply;
  if (ignoresSslErrors_) {
    reply.ignoreSslErrors();
  } else if (!ignoredSslErrors_.isEmpty()) {
    reply.ignoreSslErrors(ignoredSslErrors_);
  }
}

void RedirectedReply::abort() {
  if (reply_ != nullptr) {
    reply_->disconnect(&front_);
    reply_->abort();
  }
}

void RedirectedReply::ignoreSslErrors() {
  ignoresSslErrors_ = true;
  if (reply_ != nullptr) {
    reply_->ignoreSslErrors();
  }
}

void RedirectedReply::ignoreSslErrors(const QList<QSslError>& errors) {
  ignoredSslErrors_ = errors;
  if (reply_ != nullptr) {
    reply_->ignoreSslErrors(errors);
  }
}

QSslConfiguration RedirectedReply::sslConfiguration(const QSslConfiguration& unredirected) const {
  return reply_ != nullptr ? reply_->sslConfiguration() : unredirected;
}

}  // namespace tarnix::qt6
