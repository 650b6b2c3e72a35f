#include "platforms/qt6/network/host_request.h"

#include <QIODevice>
#include <QNetworkCookie>
#include <QNetworkCookieJar>
#include <QUrl>
#include <QVariant>
#include <map>

#include "platforms/qt6/network/reply_text.h"

namespace tarnix::qt6 {

namespace {

std::string methodOf(const HostRequest& request) {
  switch (request.operation) {
    case QNetworkAccessManager::HeadOperation:
      return "HEAD";
    case QNetworkAccessManager::GetOperation:
      return "GET";
    case QNetworkAccessManager::PutOperation:
      return "PUT";
    case QNetworkAccessManager::PostOperation:
      return "POST";
    case QNetworkAccessManager::DeleteOperation:
      return "DELETE";
    case QNetworkAccessManager::CustomOperation:
    case QNetworkAccessManager::UnknownOperation:
      break;
  }
  return textOf(request.request.attribute(QNetworkRequest::CustomVerbAttribute).toByteArray());
}

std::map<std::string, std::string> headersOf(const QNetworkRequest& request) {
  std::map<std::string, std::string> headers;
  for (const QByteArray& name : request.rawHeaderList()) {
    headers.insert_or_assign(textOf(name), textOf(request.rawHeader(name)));
  }
  return headers;
}

void setDefault(QNetworkRequest& request, QNetworkRequest::Attribute attribute,
                const QVariant& value) {
  if (!request.attribute(attribute).isValid()) {
    request.setAttribute(attribute, value);
  }
}

}  // namespace

QNetworkRequest completed(const HostRequest& request) {
  QNetworkRequest result = request.request;
  if (request.manager->redirectPolicy() != QNetworkRequest::NoLessSafeRedirectPolicy) {
    setDefault(result, QNetworkRequest::RedirectPolicyAttribute, request.manager->redirectPolicy());
  }
  if (request.manager->autoDeleteReplies()) {
    setDefault(result, QNetworkRequest::AutoDeleteReplyOnFinishAttribute, true);
  }
  if (request.body != nullptr && !request.body->isSequential() &&
      !result.header(QNetworkRequest::ContentLengthHeader).isValid()) {
    result.setHeader(QNetworkRequest::ContentLengthHeader,
                     request.body->size() - request.body->pos());
  }
  const QVariant control =
      result.attribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Automatic);
  QNetworkCookieJar* const jar =
      control.toInt() == QNetworkRequest::Automatic ? request.manager->cookieJar() : nullptr;
  if (jar != nullptr) {
    if (const QList<QNetworkCookie> cookies = jar->cookiesForUrl(result.url());
        !cookies.isEmpty()) {
      result.setHeader(QNetworkRequest::CookieHeader, QVariant::fromValue(cookies));
    }
  }
  return result;
}

platform::UrlRequest describe(const HostRequest& request) {
  platform::UrlRequest described;
  const QUrl url = request.request.url();
  if (!url.isEmpty()) {
    described.url = Url(url.toEncoded().toStdString());
  }
  described.httpMethod = methodOf(request);
  described.allHTTPHeaderFields = headersOf(request.request);
  return described;
}

}  // namespace tarnix::qt6
