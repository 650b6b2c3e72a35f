#include "platforms/qt6/network/reply_text.h"

#include <QNetworkReply>
#include <QStringDecoder>
#include <algorithm>
#include <map>

#include "platforms/qt6/network/http_status.h"
#include "probe/model/mime_type.h"

namespace tarnix::qt6 {

namespace {

constexpr const char* errorDomain = "QNetworkReply";

/// Nearly all header text is.
bool isAscii(const QByteArray& bytes) {
  return std::all_of(bytes.begin(), bytes.end(),
                     [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

/// A synchronous request that got no response has the status 0.
int statusOf(const QNetworkReply& reply) {
  return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

}  // namespace

std::string textOf(const QByteArray& bytes) {
  if (isAscii(bytes)) {
    return bytes.toStdString();
  }
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  const QString text = decoder(bytes);
  return decoder.hasError() ? QString::fromLatin1(bytes).toStdString() : text.toStdString();
}

const std::string& EncodedUrl::of(const QUrl& url) {
  if (url != url_) {
    url_ = url;
    text_ = url.toEncoded().toStdString();
  }
  return text_;
}

bool hasHttpStatus(const QNetworkReply& reply) { return statusOf(reply) > 0; }

platform::UrlResponse responseOf(const QNetworkReply& reply, EncodedUrl& url) {
  platform::UrlResponse response{Url(url.of(reply.url())), std::nullopt, std::nullopt};
  const int status = statusOf(reply);
  if (status <= 0) {
    return response;
  }
  std::map<std::string, std::string> headers;
  for (const auto& [name, value] : reply.rawHeaderPairs()) {
    headers.insert_or_assign(textOf(name), textOf(value));
  }
  const bool isHttp2 = reply.attribute(QNetworkRequest::Http2WasUsedAttribute).toBool();
  response.mimeType = mimeTypeIn(textOf(reply.rawHeader("Content-Type")));
  response.http = {status, isHttp2 ? "HTTP/2" : "HTTP/1.1", std::move(headers)};
  return response;
}

std::optional<platform::UrlError> transportErrorOf(const QNetworkReply& reply) {
  const QVariant status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute);
  const bool isOfServer = status.isValid() && status.toInt() >= 400 &&
                          reply.error() == errorOfHttpStatus(status.toInt());
  if (reply.error() == QNetworkReply::NoError || isOfServer) {
    return std::nullopt;
  }
  return platform::UrlError{errorDomain, reply.error(), reply.errorString().toStdString()};
}

platform::UrlError cancellation() {
  return {errorDomain, QNetworkReply::OperationCanceledError, "Operation canceled"};
}

}  // namespace tarnix::qt6
