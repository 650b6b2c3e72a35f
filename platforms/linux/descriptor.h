#pragma once

#include <unistd.h>

#include <utility>

namespace tarnix::linux_platform {

/// Owns a file descriptor; -1 stands for none.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
  Descriptor(Descriptor&& other) noexcept : descriptor_(other.release()) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    if (this != &other) {
      close();
      descriptor_ = other.release();
    }
    return *this;
  }
  ~Descriptor() { close(); }

  bool isOpen() const { return descriptor_ >= 0; }
  int get() const { return descriptor_; }
  int release() { return std::exchange(descriptor_, -1); }

  /// Whether the system took everything that was written.
  bool close() {
    const int descriptor = release();
    return descriptor < 0 || ::close(descriptor) == 0;
  }

 private:
  int descriptor_ = -1;
};

}  // namespace tarnix::linux_platform
