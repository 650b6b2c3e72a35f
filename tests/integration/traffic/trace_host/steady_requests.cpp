#include "tests/integration/traffic/trace_host/steady_requests.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>

#include "tests/integration/traffic/trace_host/requesting.h"

namespace trace_host {

SteadyRequests::SteadyRequests(int threadCount, int count) {
  for (int number = 0; number < threadCount; ++number) {
    threads_.emplace_back(QThread::create([this, number, count] { run(number, count); }));
    threads_.back()->start();
  }
}

SteadyRequests::~SteadyRequests() { waitForEnd(); }

void SteadyRequests::stop() {
  isOver_ = true;
  waitForEnd();
}

void SteadyRequests::waitForEnd() {
  for (const std::unique_ptr<QThread>& thread : threads_) {
    while (!thread->wait(1)) {
      // The main thread's own work goes on.
      spin(10);
    }
  }
}

void SteadyRequests::run(int thread, int count) {
  QNetworkAccessManager manager;
  for (int number = 1; number <= count && !isOver_; ++number) {
    QNetworkReply* const reply =
        manager.get(request(QString("/bytes?size=1&thread=%1&number=%2").arg(thread).arg(number)));
    wait(reply);
    delete reply;
    QThread::msleep(10);
  }
}

}  // namespace trace_host
