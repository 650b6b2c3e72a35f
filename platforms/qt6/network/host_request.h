#pragma once

#include <QNetworkAccessManager>
#include <QNetworkRequest>

#include "probe/platform/url_request.h"

class QIODevice;

namespace tarnix::qt6 {

/// A request as the application makes it: the arguments of one call. Lives as long as the call.
struct HostRequest {
  QNetworkAccessManager* manager;
  QNetworkAccessManager::Operation operation;
  const QNetworkRequest& request;
  /// Null when there is no body.
  QIODevice* body;
};

/// With what the toolkit adds to a request before it goes out.
QNetworkRequest completed(const HostRequest& request);

/// The request for the core, without body.
platform::UrlRequest describe(const HostRequest& request);

}  // namespace tarnix::qt6
