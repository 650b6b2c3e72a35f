#include "platforms/qt6/network/host_request.h"

#include <QUrl>
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

}  // namespace

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
