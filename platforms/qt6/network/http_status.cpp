#include "platforms/qt6/network/http_status.h"

#include <QCoreApplication>
#include <QUrl>
#include <algorithm>
#include <iterator>

namespace tarnix::qt6 {

namespace {

struct Phrase {
  int status;
  const char* text;
};

// As registered; in order.
constexpr Phrase phrases[] = {
    {100, "Continue"},
    {101, "Switching Protocols"},
    {102, "Processing"},
    {103, "Early Hints"},
    {200, "OK"},
    {201, "Created"},
    {202, "Accepted"},
    {203, "Non-Authoritative Information"},
    {204, "No Content"},
    {205, "Reset Content"},
    {206, "Partial Content"},
    {207, "Multi-Status"},
    {208, "Already Reported"},
    {226, "IM Used"},
    {300, "Multiple Choices"},
    {301, "Moved Permanently"},
    {302, "Found"},
    {303, "See Other"},
    {304, "Not Modified"},
    {305, "Use Proxy"},
    {307, "Temporary Redirect"},
    {308, "Permanent Redirect"},
    {400, "Bad Request"},
    {401, "Unauthorized"},
    {402, "Payment Required"},
    {403, "Forbidden"},
    {404, "Not Found"},
    {405, "Method Not Allowed"},
    {406, "Not Acceptable"},
    {407, "Proxy Authentication Required"},
    {408, "Request Timeout"},
    {409, "Conflict"},
    {410, "Gone"},
    {411, "Length Required"},
    {412, "Precondition Failed"},
    {413, "Content Too Large"},
    {414, "URI Too Long"},
    {415, "Unsupported Media Type"},
    {416, "Range Not Satisfiable"},
    {417, "Expectation Failed"},
    {418, "I'm a teapot"},
    {421, "Misdirected Request"},
    {422, "Unprocessable Content"},
    {423, "Locked"},
    {424, "Failed Dependency"},
    {425, "Too Early"},
    {426, "Upgrade Required"},
    {428, "Precondition Required"},
    {429, "Too Many Requests"},
    {431, "Request Header Fields Too Large"},
    {451, "Unavailable For Legal Reasons"},
    {500, "Internal Server Error"},
    {501, "Not Implemented"},
    {502, "Bad Gateway"},
    {503, "Service Unavailable"},
    {504, "Gateway Timeout"},
    {505, "HTTP Version Not Supported"},
    {506, "Variant Also Negotiates"},
    {507, "Insufficient Storage"},
    {508, "Loop Detected"},
    {510, "Not Extended"},
    {511, "Network Authentication Required"},
};

}  // namespace

QNetworkReply::NetworkError errorOfHttpStatus(int status) {
  switch (status) {
    case 400:
    case 418:
      return QNetworkReply::ProtocolInvalidOperationError;
    case 401:
      return QNetworkReply::AuthenticationRequiredError;
    case 403:
      return QNetworkReply::ContentAccessDenied;
    case 404:
      return QNetworkReply::ContentNotFoundError;
    case 405:
      return QNetworkReply::ContentOperationNotPermittedError;
    case 407:
      return QNetworkReply::ProxyAuthenticationRequiredError;
    case 409:
      return QNetworkReply::ContentConflictError;
    case 410:
      return QNetworkReply::ContentGoneError;
    case 500:
      return QNetworkReply::InternalServerError;
    case 501:
      return QNetworkReply::OperationNotImplementedError;
    case 503:
      return QNetworkReply::ServiceUnavailableError;
    default:
      break;
  }
  if (status < 400) {
    return QNetworkReply::NoError;
  }
  return status > 500 ? QNetworkReply::UnknownServerError : QNetworkReply::UnknownContentError;
}

QString errorTextOfHttpStatus(const QUrl& url, int status) {
  if (status == 401) {
    return QCoreApplication::translate("QHttp", "Host requires authentication");
  }
  if (status == 407) {
    return QCoreApplication::translate("QHttp", "Proxy requires authentication");
  }
  return QCoreApplication::translate("QHttp", "Error transferring %1 - server replied: %2")
      .arg(url.toString(), reasonPhraseOf(status));
}

QString reasonPhraseOf(int status) {
  const auto found =
      std::lower_bound(std::begin(phrases), std::end(phrases), status,
                       [](const Phrase& phrase, int wanted) { return phrase.status < wanted; });
  return found != std::end(phrases) && found->status == status ? QString::fromLatin1(found->text)
                                                               : QString();
}

bool isRedirectStatus(int status) {
  return status == 301 || status == 302 || status == 303 || status == 305 || status == 307 ||
         status == 308;
}

QNetworkAccessManager::Operation operationAfterRedirect(QNetworkAccessManager::Operation operation,
                                                        int status) {
  if (status == 307 || status == 308) {
    return operation;
  }
  return operation == QNetworkAccessManager::HeadOperation ? operation
                                                           : QNetworkAccessManager::GetOperation;
}

}  // namespace tarnix::qt6
