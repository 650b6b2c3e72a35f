#pragma once

#include <QByteArray>
#include <QUrl>
#include <string>
#include <utility>

#include "probe/platform/url_error.h"
#include "probe/platform/url_response.h"

class QNetworkReply;

/// What replies say, in the core's words.
namespace tarnix::qt6 {

/// Header text: UTF-8 where it is, else Latin-1, which old servers send.
std::string textOf(const QByteArray& bytes);

/// A URL with its text, which takes the toolkit longer to make than all else that a response says.
class EncodedUrl {
 public:
  EncodedUrl() = default;
  EncodedUrl(QUrl url, std::string text) : url_(std::move(url)), text_(std::move(text)) {}

  /// Makes the text only when `url` is not the one that it was made of last.
  const std::string& of(const QUrl& url);

 private:
  QUrl url_;
  std::string text_;
};

/// Whether a response over HTTP has begun to arrive.
bool hasHttpStatus(const QNetworkReply& reply);

/// As it stands at this moment. `url` is likely to be the reply's.
platform::UrlResponse responseOf(const QNetworkReply& reply, EncodedUrl& url);

/// Why the exchange failed in transport; nothing for a status that the server sent, which the
/// toolkit counts among the errors too.
std::optional<platform::UrlError> transportErrorOf(const QNetworkReply& reply);

/// A reply that was let go of before its end.
platform::UrlError cancellation();

}  // namespace tarnix::qt6
