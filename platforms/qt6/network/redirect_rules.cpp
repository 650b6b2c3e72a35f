#include "platforms/qt6/network/redirect_rules.h"

#include <QCoreApplication>
#include <QUrl>
#include <QVariant>

namespace tarnix::qt6::redirect_rules {

namespace {

bool hasSameOrigin(const QUrl& one, const QUrl& other) {
  return one.scheme() == other.scheme() && one.host() == other.host() &&
         one.port(one.scheme() == "https" ? 443 : 80) ==
             other.port(other.scheme() == "https" ? 443 : 80);
}

}  // namespace

int policyOf(const QNetworkRequest& request) {
  const QVariant policy = request.attribute(QNetworkRequest::RedirectPolicyAttribute);
  return policy.isValid() ? policy.toInt() : QNetworkRequest::NoLessSafeRedirectPolicy;
}

Refusal refusalOf(const QUrl& target, const QUrl& place, int policy) {
  if (target.scheme() != "http" && target.scheme() != "https") {
    return {QNetworkReply::ProtocolUnknownError,
            QCoreApplication::translate("QHttp", "Unknown protocol specified")};
  }
  const bool isLessSafe = place.scheme() == "https" && target.scheme() == "http";
  const bool isElsewhere =
      policy == QNetworkRequest::SameOriginRedirectPolicy && !hasSameOrigin(place, target);
  if (isElsewhere || (isLessSafe && policy == QNetworkRequest::NoLessSafeRedirectPolicy)) {
    return {QNetworkReply::InsecureRedirectError,
            QCoreApplication::translate("QHttp", "Insecure redirect")};
  }
  return {};
}

QNetworkRequest requestTo(const QUrl& target, const QNetworkRequest& redirected,
                          QNetworkAccessManager::Operation operation, bool hasBody) {
  QNetworkRequest followed = redirected;
  followed.setUrl(target);
  if (!hasBody) {
    followed.setHeader(QNetworkRequest::ContentLengthHeader, QVariant());
  }
  if (operation == QNetworkAccessManager::GetOperation ||
      operation == QNetworkAccessManager::HeadOperation) {
    followed.setHeader(QNetworkRequest::ContentTypeHeader, QVariant());
  }
  return followed;
}

}  // namespace tarnix::qt6::redirect_rules
