#pragma once

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPointer>
#include <QString>
#include <QVariant>
#include <functional>

namespace trace_host {

constexpr int timeLimit = 20'000;  // milliseconds a scenario

using Make = std::function<QNetworkReply*(QNetworkAccessManager&)>;

struct Options {
  bool loose = false;
  bool readInSlots = false;
  /// Bytes to read in each readyRead; 0: all.
  qint64 readAtMost = 0;
};

/// To this path of the server.
QNetworkRequest request(const QString& path);
QNetworkRequest with(QNetworkRequest request, QNetworkRequest::Attribute attribute,
                     const QVariant& value);
/// Bytes of which each differs from those beside it.
QByteArray pattern(qsizetype size);

void wait(QNetworkReply* reply);
void spin(int milliseconds);
/// Until a reply has come to its end or is gone, and a little longer, for what must not follow.
void settle(const QPointer<QNetworkReply>& reply);

/// Writes down what the manager itself tells.
void traceManager(QNetworkAccessManager& manager);
/// Traces the reply to its end, and deletes it.
void follow(QNetworkReply* reply, const Options& options = {});
/// One request of a manager of its own, followed.
void simple(const Make& make, const Options& options = {});
/// A scenario that gets this path.
std::function<void()> get(const char* path, const Options& options = {});

}  // namespace trace_host
