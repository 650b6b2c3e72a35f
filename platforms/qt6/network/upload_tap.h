#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <optional>

#include "probe/platform/input_stream.h"

class QIODevice;

namespace tarnix::qt6 {

/// How much of an upload anybody looks at.
inline constexpr qint64 observedUploadBytes = 65'536;

/// The beginning of a body whose device stands where the upload begins; the device is left as it
/// is. Nothing for devices that cannot be read twice.
std::optional<QByteArray> beginningOfBody(QIODevice& device);

/// Notes the beginning of a body that can be read only once, as it comes in. The upload reads all
/// the same from the device what was looked at here. One thread, that of the device.
class UploadTap : public platform::InputStream {
 public:
  /// `isStreamed`: the toolkit reads from the device when the network has room, not when there is
  /// something to read. What is new cannot be told from what was left then, so that only the first
  /// piece is noted. Made before the toolkit connects itself to the device.
  UploadTap(QIODevice& device, bool isStreamed);

  /// The toolkit is about to read from the device for the first time. From then on it empties the
  /// device each time that there is more.
  void toolkitReads();

  void open() override {}
  void close() override {}
  bool hasBytesAvailable() override { return position_ < bytes_.size(); }
  std::ptrdiff_t read(std::span<char> buffer) override;

 private:
  void look(qint64 available);
  void moreArrived();
  void stop();

  /// Null once nothing more is noted.
  QPointer<QIODevice> device_;
  /// Ends the connection to the device.
  QObject context_;
  const bool isStreamed_;
  bool isEmptiedEachTime_ = false;
  QByteArray bytes_;
  /// What was looked at and is still in the device.
  qint64 unread_ = 0;
  qsizetype position_ = 0;
};

}  // namespace tarnix::qt6
