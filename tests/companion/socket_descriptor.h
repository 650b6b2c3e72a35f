#pragma once

#include <unistd.h>

#include <utility>

namespace tarnix::companion {

/// A descriptor, closed with its owner.
class SocketDescriptor {
 public:
  SocketDescriptor() = default;
  explicit SocketDescriptor(int descriptor) : descriptor_(descriptor) {}
  SocketDescriptor(SocketDescriptor&& other) noexcept
      : descriptor_(std::exchange(other.descriptor_, -1)) {}
  SocketDescriptor& operator=(SocketDescriptor&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
  }
  ~SocketDescriptor() {
    if (descriptor_ >= 0) {
      close(descriptor_);
    }
  }

  int get() const { return descriptor_; }

 private:
  int descriptor_ = -1;
};

}  // namespace tarnix::companion
