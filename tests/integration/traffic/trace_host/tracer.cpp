#include "tests/integration/traffic/trace_host/tracer.h"

#include <QCryptographicHash>
#include <QNetworkRequest>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslError>
#include <QUrl>
#include <QVariant>

#include "tests/integration/traffic/trace_host/output.h"

namespace trace_host {
namespace {

QString text(const QVariant& value) {
  QString result = value.typeName() == nullptr ? QString("none") : QString(value.typeName()) + " ";
  return result + QString::fromLatin1(value.toByteArray().left(200).toPercentEncoding(" /:;=,\""));
}

}  // namespace

Tracer::Tracer(QNetworkReply* reply, bool isLoose) : reply_(reply), isLoose_(isLoose) {
  // Several signals of the network library are only in some versions: all of them are taken from
  // the type information.
  state("made");
  connect(reply, &QNetworkReply::metaDataChanged, this, [this] { state("metaDataChanged"); });
  connect(reply, &QNetworkReply::errorOccurred, this, [this](QNetworkReply::NetworkError code) {
    state(QString("errorOccurred %1").arg(int(code)));
  });
  connect(reply, &QNetworkReply::redirected, this,
          [this](const QUrl& url) { state("redirected " + url.toString()); });
  connect(reply, &QNetworkReply::redirectAllowed, this, [this] { state("redirectAllowed"); });
  connect(reply, &QNetworkReply::readyRead, this, [this] { data("readyRead"); });
  connect(reply, &QNetworkReply::readChannelFinished, this,
          [this] { state("readChannelFinished"); });
  connect(reply, &QNetworkReply::aboutToClose, this, [this] { state("aboutToClose"); });
  connect(reply, &QNetworkReply::bytesWritten, this, [this] { state("bytesWritten"); });
  connect(reply, &QNetworkReply::downloadProgress, this, [this](qint64 now, qint64 total) {
    data(QString("downloadProgress %1 of %2").arg(now).arg(total));
  });
  connect(reply, &QNetworkReply::uploadProgress, this, [this](qint64 now, qint64 total) {
    // How far an upload has come when it is reported is a matter of timing.
    if (now == total || total <= 0) {
      state(QString("uploadProgress %1 of %2").arg(now).arg(total));
    }
  });
  connect(reply, &QNetworkReply::requestSent, this, [this] { state("requestSent"); });
  connect(reply, &QNetworkReply::socketStartedConnecting, this,
          [this] { state("socketStartedConnecting"); });
  connect(reply, &QNetworkReply::encrypted, this, [this] {
    state("encrypted by " + reply_->sslConfiguration().peerCertificate().subjectDisplayName());
  });
  connect(reply, &QNetworkReply::sslErrors, this, [this](const QList<QSslError>& errors) {
    for (const QSslError& error : errors) {
      state("sslErrors " + error.errorString());
    }
  });
  connect(reply, &QNetworkReply::finished, this, [this] { state("finished"); });
  connect(reply, &QObject::destroyed, this, [] { say("  destroyed"); });
}

void Tracer::state(const QString& what) {
  if (reply_ == nullptr) {
    say("  " + what + " (gone)");
    return;
  }
  const QNetworkReply& reply = *reply_;
  QString line = "  " + what + " |";
  line += QString(" open %1").arg(int(reply.openMode()));
  if (!isLoose_) {
    line += QString(" available %1 size %2").arg(reply.bytesAvailable()).arg(reply.size());
  }
  line += QString(" %1%2").arg(reply.isFinished() ? "finished" : "running",
                               reply.isRunning() ? "" : " idle");
  line += QString(" error %1 \"%2\"").arg(int(reply.error())).arg(reply.errorString());
  say(line);
  const QString head = this->head();
  if (head != lastHead_) {
    lastHead_ = head;
    say(head);
  }
}

QString Tracer::head() const {
  QString lines = "    url " + reply_->url().toString() + " of " +
                  reply_->request().url().toString() +
                  QString(" operation %1").arg(int(reply_->operation()));
  for (int code = 0; code < 40; ++code) {
    const QVariant value = reply_->attribute(static_cast<QNetworkRequest::Attribute>(code));
    if (value.isValid()) {
      lines += QString("\n    attribute %1 %2").arg(code).arg(text(value));
    }
  }
  for (const auto& [name, value] : reply_->rawHeaderPairs()) {
    lines += "\n    header " + name + ": " + value;
  }
  for (const QNetworkRequest::KnownHeaders header :
       {QNetworkRequest::ContentTypeHeader, QNetworkRequest::ContentLengthHeader,
        QNetworkRequest::LocationHeader, QNetworkRequest::LastModifiedHeader}) {
    if (reply_->header(header).isValid()) {
      lines +=
          QString("\n    known header %1 %2").arg(int(header)).arg(text(reply_->header(header)));
    }
  }
  for (const auto& name : reply_->request().rawHeaderList()) {
    lines += "\n    sent " + name + ": " + reply_->request().rawHeader(name);
  }
  return lines;
}

void Tracer::body(const QByteArray& bytes) {
  say(QString("  body %1 %2 %3")
          .arg(bytes.size())
          .arg(QString(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex()),
               QString(bytes.left(60).toPercentEncoding(" "))));
}

/// What depends on how the bytes were cut up on the way is written once for a run of it.
void Tracer::data(const QString& what) {
  if (isLoose_) {
    if (!hasSaidData_) {
      hasSaidData_ = true;
      state("data");
    }
    return;
  }
  state(what);
}

}  // namespace trace_host
