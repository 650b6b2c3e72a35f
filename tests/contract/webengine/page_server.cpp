#include "tests/contract/webengine/page_server.h"

#include <QHostAddress>
#include <QTcpSocket>

namespace tarnix::contract {

PageServer::PageServer() {
  listen(QHostAddress::LocalHost);
  connect(this, &QTcpServer::newConnection, this, &PageServer::answer);
}

QUrl PageServer::add(const QString& path, const QByteArray& body, const QByteArray& headers,
                     const QString& host) {
  pages_.insert(path.toUtf8(), {body, headers});
  return QUrl(QStringLiteral("http://%1:%2%3").arg(host).arg(serverPort()).arg(path));
}

void PageServer::answer() {
  while (QTcpSocket* const connection = nextPendingConnection()) {
    connect(connection, &QTcpSocket::disconnected, connection, &QObject::deleteLater);
    connect(connection, &QTcpSocket::readyRead, this, [this, connection] {
      if (!connection->peek(65536).contains("\r\n\r\n")) {
        return;
      }
      const QByteArray path = connection->readAll().split(' ').value(1);
      const bool isThere = pages_.contains(path);
      const Page page = pages_.value(path);
      connection->write(QByteArray(isThere ? "HTTP/1.1 200 OK\r\n" : "HTTP/1.1 404 None\r\n") +
                        "Content-Type: text/html; charset=utf-8\r\nConnection: close\r\n" +
                        page.headers + "Content-Length: " + QByteArray::number(page.body.size()) +
                        "\r\n\r\n" + page.body);
      connection->disconnectFromHost();
    });
  }
}

}  // namespace tarnix::contract
