#include <fcntl.h>
#include <unistd.h>

#include <QBuffer>
#include <QFile>
#include <QHttpMultiPart>
#include <QProcess>
#include <QTemporaryFile>
#include <QThread>
#include <memory>

#include "tests/integration/traffic/trace_host/late_device.h"
#include "tests/integration/traffic/trace_host/output.h"
#include "tests/integration/traffic/trace_host/requesting.h"
#include "tests/integration/traffic/trace_host/scenarios.h"

namespace trace_host {
namespace {

/// From the end of a pipe that another program writes into.
void uploadFromPipe() {
  QTemporaryFile file;
  if (!file.open()) {
    return;
  }
  file.write(pattern(65'537));
  file.flush();
  QProcess writer;
  writer.start("cat", {file.fileName()});
  simple([&](auto& manager) { return manager.post(request("/echo"), &writer); });
  writer.waitForFinished();
}

/// The same pipe as a file, which does not say when there is more to read, nor when there is no
/// more: the toolkit can send so many bytes as are announced, and no end is looked for.
void uploadFromPipeAsFile() {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    return;
  }
  const QByteArray bytes = pattern(65'537);
  // More than a pipe holds: somebody else writes.
  std::unique_ptr<QThread> writer(QThread::create([end = ends[1], bytes] {
    qsizetype written = 0;
    while (written < bytes.size()) {
      const ssize_t count = write(end, bytes.constData() + written, size_t(bytes.size() - written));
      if (count <= 0) {
        break;
      }
      written += count;
    }
    close(end);
  }));
  writer->start();
  QFile pipe;
  if (!pipe.open(ends[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
    return;
  }
  simple([&](auto& manager) {
    QNetworkRequest streaming =
        with(request("/echo"), QNetworkRequest::DoNotBufferUploadDataAttribute, true);
    streaming.setHeader(QNetworkRequest::ContentLengthHeader, 65'537);
    return manager.post(streaming, &pipe);
  });
  writer->wait();
}

QNetworkReply* multipart(QNetworkAccessManager& manager) {
  auto* const parts = new QHttpMultiPart(QHttpMultiPart::FormDataType);
  parts->setBoundary("BoundaryThatIsTheSameInEveryRun");
  QHttpPart first;
  first.setHeader(QNetworkRequest::ContentDispositionHeader, "form-data; name=\"one\"");
  first.setBody("first part");
  parts->append(first);
  QHttpPart second;
  second.setHeader(QNetworkRequest::ContentDispositionHeader, "form-data; name=\"two\"");
  auto* const device = new QBuffer(parts);
  device->setData(pattern(100'000));
  device->open(QIODevice::ReadOnly);
  second.setBodyDevice(device);
  parts->append(second);
  QNetworkReply* const reply = manager.post(request("/echo"), parts);
  parts->setParent(reply);
  return reply;
}

}  // namespace

Scenarios uploadScenarios() {
  return {
      {"upload-memory",
       [] {
         simple([](auto& manager) { return manager.post(request("/echo"), pattern(65'537)); });
       }},
      {"upload-file",
       [] {
         QTemporaryFile file;
         if (!file.open()) {
           return;
         }
         file.write(pattern(65'537));
         file.flush();
         file.seek(0);
         simple([&](auto& manager) { return manager.post(request("/echo"), &file); });
         say(QString("  file stands at %1").arg(file.pos()));
       }},
      {"upload-file-from-the-middle",
       [] {
         QTemporaryFile file;
         if (!file.open()) {
           return;
         }
         file.write(pattern(65'537));
         file.flush();
         file.seek(1'000);
         simple([&](auto& manager) { return manager.post(request("/echo"), &file); });
       }},
      {"upload-pipe", uploadFromPipe},
      {"upload-pipe-as-file", uploadFromPipeAsFile},
      {"upload-late-device",
       [] {
         LateDevice device(pattern(65'537));
         simple([&](auto& manager) { return manager.post(request("/echo"), &device); });
       }},
      {"upload-unbuffered-late-device",
       [] {
         LateDevice device(pattern(65'537));
         simple([&](auto& manager) {
           QNetworkRequest streaming =
               with(request("/echo"), QNetworkRequest::DoNotBufferUploadDataAttribute, true);
           streaming.setHeader(QNetworkRequest::ContentLengthHeader, 65'537);
           return manager.post(streaming, &device);
         });
       }},
      {"upload-multipart", [] { simple(multipart); }},
      {"upload-closed-device",
       [] {
         QBuffer device;
         device.setData("x");
         simple([&](auto& manager) { return manager.post(request("/echo"), &device); });
       }},
  };
}

}  // namespace trace_host
