#include <QEventLoop>
#include <QStringList>
#include <QThread>
#include <QTimer>
#include <QUrl>
#include <atomic>
#include <memory>
#include <vector>

#include "tests/integration/traffic/trace_host/output.h"
#include "tests/integration/traffic/trace_host/requesting.h"
#include "tests/integration/traffic/trace_host/scenarios.h"
#include "tests/integration/traffic/trace_host/tracer.h"

namespace trace_host {
namespace {

/// One of many replies at a time: what it does is gathered, to be written in its turn.
class ParallelReply {
 public:
  void watch(QNetworkReply* reply) {
    reply_.reset(reply);
    const auto note = [this](const char* signal) {
      return [this, signal] {
        // How often there is something to read is a matter of chance.
        if (signals_.isEmpty() || signals_.last() != signal) {
          signals_.append(signal);
        }
      };
    };
    // Not whether it connects, and when its request has gone out: that is up to who comes first.
    QObject::connect(reply, &QNetworkReply::metaDataChanged, note("metaDataChanged"));
    QObject::connect(reply, &QNetworkReply::errorOccurred, note("errorOccurred"));
    QObject::connect(reply, &QNetworkReply::readyRead, note("data"));
    QObject::connect(reply, &QNetworkReply::downloadProgress, note("data"));
    QObject::connect(reply, &QNetworkReply::readChannelFinished, note("readChannelFinished"));
    QObject::connect(reply, &QNetworkReply::finished, note("finished"));
  }
  QNetworkReply* reply() const { return reply_.get(); }

  void write() const {
    say("  " + signals_.join(" "));
    Tracer tracer(reply_.get());
    tracer.body(reply_->readAll());
  }

 private:
  std::unique_ptr<QNetworkReply> reply_;
  QStringList signals_;
};

}  // namespace

Scenarios threadingScenarios() {
  return {
      {"synchronous",
       [] {
         simple([](auto& manager) {
           return manager.get(
               with(request("/plain"), QNetworkRequest::SynchronousRequestAttribute, true));
         });
       }},
      {"synchronous-post",
       [] {
         simple([](auto& manager) {
           return manager.post(
               with(request("/echo"), QNetworkRequest::SynchronousRequestAttribute, true),
               QByteArray("sync"));
         });
       }},
      {"synchronous-refused",
       [] {
         simple([](auto& manager) {
           return manager.get(with(QNetworkRequest(QUrl("http://127.0.0.1:1/")),
                                   QNetworkRequest::SynchronousRequestAttribute, true));
         });
       }},
      {"parallel",
       [] {
         QNetworkAccessManager manager;
         std::vector<ParallelReply> replies(100);
         int left = 100;
         QEventLoop loop;
         for (int number = 0; number < 100; ++number) {
           ParallelReply& reply = replies[size_t(number)];
           reply.watch(manager.get(request(QString("/bytes?size=%1").arg(number * 100))));
           QObject::connect(reply.reply(), &QNetworkReply::finished, [&left, &loop] {
             if (--left == 0) {
               loop.quit();
             }
           });
         }
         QTimer::singleShot(timeLimit, &loop, &QEventLoop::quit);
         loop.exec();
         // In the order in which they were made: the one in which they end is a matter of chance.
         for (const ParallelReply& reply : replies) {
           reply.write();
         }
       }},
      {"other-thread",
       [] {
         std::unique_ptr<QThread> thread(QThread::create(
             [] { simple([](auto& manager) { return manager.get(request("/plain")); }); }));
         thread->start();
         thread->wait();
       }},
      {"gigabyte",
       [] {
         QNetworkAccessManager manager;
         QNetworkReply* const reply = manager.get(request("/bytes?size=1073741824"));
         // Without a limit the toolkit takes in whatever comes faster than it is read.
         reply->setReadBufferSize(4'000'000);
         qint64 received = 0;
         QObject::connect(reply, &QNetworkReply::readyRead,
                          [&] { received += reply->readAll().size(); });
         wait(reply);
         say(QString("  received %1").arg(received + reply->readAll().size()));
         delete reply;
       }},
      {"load",
       [] {
         std::atomic<int> wrong = 0;
         std::vector<std::unique_ptr<QThread>> threads;
         for (int thread = 0; thread < 4; ++thread) {
           threads.emplace_back(QThread::create([&wrong, thread] {
             QNetworkAccessManager manager;
             for (int turn = 0; turn < 250; ++turn) {
               const int size = thread * 1'000 + turn;
               QNetworkReply* const reply =
                   manager.get(request(QString("/bytes?size=%1").arg(size)));
               wait(reply);
               wrong += reply->error() == QNetworkReply::NoError && reply->readAll().size() == size
                            ? 0
                            : 1;
               delete reply;
             }
           }));
           threads.back()->start();
         }
         for (const std::unique_ptr<QThread>& thread : threads) {
           while (!thread->wait(1)) {
             // The main thread's own work goes on: it carries out what a companion sends.
             spin(10);
           }
         }
         say(QString("  wrong %1").arg(wrong.load()));
       }},
  };
}

}  // namespace trace_host
