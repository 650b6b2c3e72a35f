#pragma once

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QString>

class QUrl;

/// When and how the toolkit follows a redirect, for replies that it has no part in.
namespace tarnix::qt6::redirect_rules {

/// One of `QNetworkRequest::RedirectPolicy`, or whatever else the application gave.
int policyOf(const QNetworkRequest& request);

/// What stands in the way of following a redirect.
struct Refusal {
  /// `NoError` when nothing does.
  QNetworkReply::NetworkError error = QNetworkReply::NoError;
  /// The toolkit's own words, translated if the application translates them.
  QString text;
};

/// From `place` to `target`.
Refusal refusalOf(const QUrl& target, const QUrl& place, int policy);

/// The request to `target` that takes the place of `redirected`. Of the headers that describe a
/// body only those stay that still fit.
QNetworkRequest requestTo(const QUrl& target, const QNetworkRequest& redirected,
                          QNetworkAccessManager::Operation operation, bool hasBody);

}  // namespace tarnix::qt6::redirect_rules
