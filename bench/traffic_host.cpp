// An application that makes requests when it is told to. Arguments: the address of a server, and
// optionally the port of a proxy on loopback. Prints "ready", and for each line of standard input
// how many nanoseconds what it names took:
//
//     get PATH COUNT    so many requests one after the other: the median of one
//     post PATH COUNT   the same with a body of 65,537 bytes
//     bulk BYTES        one download, read as it comes
#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QRasterWindow>
#include <QUrl>
#include <algorithm>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

class Requests {
 public:
  Requests(QString server, int proxyPort) : server_(std::move(server)) {
    if (proxyPort != 0) {
      manager_.setProxy(
          QNetworkProxy(QNetworkProxy::HttpProxy, "127.0.0.1", static_cast<quint16>(proxyPort)));
    }
  }

  qint64 carryOut(const std::string& line) {
    std::istringstream words(line);
    std::string verb;
    std::string what;
    int count = 1;
    words >> verb >> what >> count;
    if (verb == "bulk") {
      what = "/bulk/" + what;
    }
    std::vector<qint64> times;
    for (int turn = 0; turn < count; ++turn) {
      times.push_back(one(verb, QString::fromStdString(what)));
    }
    std::nth_element(times.begin(), times.begin() + count / 2, times.end());
    return times[static_cast<std::size_t>(count / 2)];
  }

 private:
  qint64 one(const std::string& verb, const QString& path) {
    QNetworkRequest request(QUrl(server_ + path));
    QElapsedTimer timer;
    timer.start();
    QNetworkReply* const reply =
        verb == "post" ? manager_.post(request, body_) : manager_.get(request);
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::readyRead, reply, [reply] { reply->readAll(); });
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    const qint64 time = timer.nsecsElapsed();
    if (reply->error() != QNetworkReply::NoError) {
      std::cerr << qPrintable(reply->errorString()) << std::endl;
      std::_Exit(1);
    }
    delete reply;
    return time;
  }

  QString server_;
  QNetworkAccessManager manager_;
  QByteArray body_ = QByteArray(65'537, 'x');
};

}  // namespace

int main(int argumentCount, char** arguments) {
  QGuiApplication application(argumentCount, arguments);
  const QStringList words = QGuiApplication::arguments();
  QRasterWindow window;
  window.show();
  Requests requests(words.value(1), words.value(2).toInt());
  std::thread reader([&] {
    std::cout << "ready" << std::endl;
    std::string line;
    while (std::getline(std::cin, line)) {
      QMetaObject::invokeMethod(
          &application, [&] { std::cout << requests.carryOut(line) << std::endl; },
          Qt::BlockingQueuedConnection);
    }
    QMetaObject::invokeMethod(&application, [] { QGuiApplication::quit(); });
  });
  const int result = QGuiApplication::exec();
  reader.join();
  return result;
}
