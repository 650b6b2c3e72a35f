#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QTimer>
#include <algorithm>
#include <utility>

namespace trace_host {

/// A device that gives its bytes in pieces, later, as a socket does.
class LateDevice : public QIODevice {
 public:
  explicit LateDevice(QByteArray bytes) : rest_(std::move(bytes)) {
    open(ReadOnly);
    QTimer::singleShot(20, this, [this] { give(); });
  }
  bool isSequential() const override { return true; }
  qint64 bytesAvailable() const override { return ready_.size() + QIODevice::bytesAvailable(); }
  bool atEnd() const override { return isOver_ && ready_.isEmpty() && QIODevice::atEnd(); }

 protected:
  qint64 readData(char* data, qint64 size) override {
    if (ready_.isEmpty()) {
      return isOver_ ? -1 : 0;
    }
    const qint64 count = qMin<qint64>(size, ready_.size());
    std::copy_n(ready_.constData(), count, data);
    ready_.remove(0, count);
    return count;
  }
  qint64 writeData(const char*, qint64) override { return -1; }

 private:
  void give() {
    ready_ += rest_.left(30'000);
    rest_.remove(0, 30'000);
    isOver_ = rest_.isEmpty();
    Q_EMIT readyRead();
    if (isOver_) {
      Q_EMIT readChannelFinished();
    } else {
      QTimer::singleShot(20, this, [this] { give(); });
    }
  }

  QByteArray rest_;
  QByteArray ready_;
  bool isOver_ = false;
};

}  // namespace trace_host
