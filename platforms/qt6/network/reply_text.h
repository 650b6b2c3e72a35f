#pragma once

#include <QByteArray>
#include <string>

#include "probe/platform/url_error.h"
#include "probe/platform/url_response.h"

class QNetworkReply;

/// What replies say, in the core's words.
namespace tarnix::qt6 {

/// Header text: UTF-8 where it is, else Latin-1, which old servers send.
std::string textOf(const QByteArray& bytes);

/// As it stands at this moment.
platform::UrlResponse responseOf(const QNetworkReply& reply);

/// Why the exchange failed in transport; nothing for a status that the server sent, which the
/// toolkit counts among the errors too.
std::optional<platform::UrlError> transportErrorOf(const QNetworkReply& reply);

/// A reply that was let go of before its end.
platform::UrlError cancellation();

}  // namespace tarnix::qt6
