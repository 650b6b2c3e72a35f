#include "tests/integration/traffic/trace_host/requesting.h"

#include <QAuthenticator>
#include <QEventLoop>
#include <QList>
#include <QSslError>
#include <QTimer>
#include <QUrl>

#include "tests/integration/traffic/trace_host/output.h"
#include "tests/integration/traffic/trace_host/tracer.h"

namespace trace_host {

QNetworkRequest request(const QString& path) { return QNetworkRequest(QUrl(base() + path)); }

QNetworkRequest with(QNetworkRequest request, QNetworkRequest::Attribute attribute,
                     const QVariant& value) {
  request.setAttribute(attribute, value);
  return request;
}

QByteArray pattern(qsizetype size) {
  QByteArray bytes(size, '\0');
  for (qsizetype index = 0; index < size; ++index) {
    bytes[index] = static_cast<char>('a' + index % 23);
  }
  return bytes;
}

void wait(QNetworkReply* reply) {
  if (reply->isFinished()) {
    return;
  }
  QEventLoop loop;
  QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
  QTimer::singleShot(timeLimit, &loop, [&loop] {
    say("  TOO LATE");
    loop.quit();
  });
  loop.exec();
}

void spin(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

void settle(const QPointer<QNetworkReply>& reply) {
  for (int turn = 0; turn < timeLimit && reply != nullptr && !reply->isFinished(); ++turn) {
    spin(1);
  }
  spin(50);
}

void traceManager(QNetworkAccessManager& manager) {
  QObject::connect(&manager, &QNetworkAccessManager::finished, [](QNetworkReply* reply) {
    say(QString("  manager finished %1").arg(int(reply->error())));
  });
  QObject::connect(&manager, &QNetworkAccessManager::authenticationRequired,
                   [](QNetworkReply*, QAuthenticator* authenticator) {
                     say("  authenticationRequired " + authenticator->realm());
                   });
  QObject::connect(&manager, &QNetworkAccessManager::encrypted, [] { say("  manager encrypted"); });
  QObject::connect(&manager, &QNetworkAccessManager::sslErrors,
                   [](QNetworkReply*, const QList<QSslError>& errors) {
                     say(QString("  manager sslErrors %1").arg(errors.size()));
                   });
}

void follow(QNetworkReply* reply, const Options& options) {
  Tracer tracer(reply, options.loose);
  QByteArray read;
  if (options.readInSlots) {
    QObject::connect(reply, &QNetworkReply::readyRead, &tracer, [&, reply] {
      read += options.readAtMost == 0 ? reply->readAll() : reply->read(options.readAtMost);
    });
  }
  wait(reply);
  read += reply->readAll();
  tracer.body(read);
  tracer.state("end");
  delete reply;
}

void simple(const Make& make, const Options& options) {
  QNetworkAccessManager manager;
  traceManager(manager);
  follow(make(manager), options);
}

std::function<void()> get(const char* path, const Options& options) {
  return [path, options] {
    simple([path](QNetworkAccessManager& manager) { return manager.get(request(path)); }, options);
  };
}

}  // namespace trace_host
