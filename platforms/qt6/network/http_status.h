#pragma once

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QString>

class QUrl;

/// What the toolkit makes of HTTP status codes, for replies that it has no part in.
namespace tarnix::qt6 {

/// `NoError` below 400.
QNetworkReply::NetworkError errorOfHttpStatus(int status);

/// What a reply from `url` says of a status that is an error: the toolkit's own words, translated
/// if the application translates them.
QString errorTextOfHttpStatus(const QUrl& url, int status);

/// The registered phrase; empty for codes without one.
QString reasonPhraseOf(int status);

bool isRedirectStatus(int status);

/// How a redirect is followed: with the same method, or asking for the new place.
QNetworkAccessManager::Operation operationAfterRedirect(QNetworkAccessManager::Operation operation,
                                                        int status);

}  // namespace tarnix::qt6
