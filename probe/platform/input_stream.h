#pragma once

#include <cstddef>
#include <span>

namespace tarnix::platform {

/// A source of bytes that is read once, from front to back. One thread at a time.
class InputStream {
 public:
  virtual ~InputStream() = default;

  virtual void open() = 0;
  virtual void close() = 0;
  /// Whether a read would give something at once.
  virtual bool hasBytesAvailable() = 0;
  /// Fills the front of `buffer`. Returns the number of bytes read, 0 at the end, less on failure.
  virtual std::ptrdiff_t read(std::span<char> buffer) = 0;
};

}  // namespace tarnix::platform
