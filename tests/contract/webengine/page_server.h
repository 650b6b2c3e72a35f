#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QTcpServer>
#include <QUrl>

namespace tarnix::contract {

/// Serves pages of the tests over HTTP on the loopback interface, out of this process.
class PageServer : public QTcpServer {
 public:
  PageServer();

  /// The page's address. `headers` are whole lines, each with its end.
  QUrl add(const QString& path, const QByteArray& body, const QByteArray& headers = {},
           const QString& host = QStringLiteral("127.0.0.1"));

 private:
  void answer();

  struct Page {
    QByteArray body;
    QByteArray headers;
  };
  QHash<QByteArray, Page> pages_;
};

}  // namespace tarnix::contract
