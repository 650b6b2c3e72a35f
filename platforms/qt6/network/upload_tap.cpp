#include "platforms/qt6/network/upload_tap.h"

#include <sys/ioctl.h>

#include <QFileDevice>
#include <QIODevice>
#include <QNetworkReply>
#include <algorithm>

namespace tarnix::qt6 {

namespace {

bool isReadable(const QIODevice& device) { return device.isOpen() && device.isReadable(); }

/// Looking ahead leaves bytes in the device's own buffer. A device of the application's that was
/// opened without one may not reckon with that; the toolkit's own classes do.
bool canLookAhead(const QIODevice& device) {
  return isReadable(device) && ((device.openMode() & QIODevice::Unbuffered) == 0 ||
                                qobject_cast<const QNetworkReply*>(&device) != nullptr);
}

/// Bytes that can be read without waiting. Pipes do not know, so that the system is asked.
qint64 readableNow(const QIODevice& device) {
  qint64 available = device.bytesAvailable();
  if (const auto* const file = qobject_cast<const QFileDevice*>(&device)) {
    int inPipe = 0;
    if (file->handle() >= 0 && ioctl(file->handle(), FIONREAD, &inPipe) == 0) {
      available += inPipe;
    }
  }
  return available;
}

}  // namespace

std::optional<QByteArray> beginningOfBody(QIODevice& device) {
  if (device.isSequential() || !isReadable(device)) {
    return std::nullopt;
  }
  // The device of a multipart body works out its parts when it is asked for its size, and fails
  // when it is read before.
  static_cast<void>(device.size());
  return device.peek(observedUploadBytes);
}

UploadTap::UploadTap(QIODevice& device, bool isStreamed) : isStreamed_(isStreamed) {
  if (!canLookAhead(device)) {
    return;
  }
  device_ = &device;
  look(readableNow(device));
  QObject::connect(
      &device, &QIODevice::readyRead, &context_, [this] { moreArrived(); }, Qt::DirectConnection);
}

void UploadTap::moreArrived() {
  if (device_ == nullptr) {
    return;
  }
  if (isStreamed_ && !bytes_.isEmpty()) {
    stop();
    return;
  }
  if (isEmptiedEachTime_) {
    unread_ = 0;
  }
  look(device_->bytesAvailable());
}

void UploadTap::toolkitReads() {
  if (isEmptiedEachTime_ || isStreamed_) {
    return;
  }
  isEmptiedEachTime_ = true;
  // A pipe does not say when there is more: this is the last chance to see what is in it.
  if (qobject_cast<QFileDevice*>(device_.data()) != nullptr && isReadable(*device_)) {
    look(readableNow(*device_));
  }
}

void UploadTap::look(qint64 available) {
  if (available < unread_) {
    // Somebody else reads.
    stop();
    return;
  }
  const qint64 wanted = std::min(available, unread_ + observedUploadBytes - bytes_.size());
  bytes_ += device_->peek(wanted).mid(unread_);
  unread_ = available;
  if (bytes_.size() >= observedUploadBytes) {
    stop();
  }
}

void UploadTap::stop() {
  if (device_ != nullptr) {
    QObject::disconnect(device_, nullptr, &context_, nullptr);
    device_ = nullptr;
  }
}

std::ptrdiff_t UploadTap::read(std::span<char> buffer) {
  const qsizetype count =
      std::min(static_cast<qsizetype>(buffer.size()), bytes_.size() - position_);
  std::copy_n(bytes_.constData() + position_, count, buffer.data());
  position_ += count;
  return count;
}

}  // namespace tarnix::qt6
