#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string_view>

#include "platforms/linux/descriptor.h"

namespace tarnix::linux_platform {

/// Where a stream went before it was diverted. Lives on one thread.
class Echo {
 public:
  /// Without a descriptor there is nowhere to pass anything on to.
  explicit Echo(Descriptor destination);

  int descriptor() const { return destination_.get(); }

  /// Whether bytes can move here from a pipe without passing through the process. Then it makes no
  /// difference when the process ends: each byte is either still in the pipe or at its destination.
  bool canMove() const { return canMove_; }

  /// Moves up to `count` bytes that are in the pipe. Returns how many it dealt with; 0 when they
  /// have to be written after all, and then for good.
  std::size_t move(int pipe, std::size_t count);

  /// Writes some of `bytes`, at least one. Returns how many it dealt with.
  std::size_t write(std::string_view bytes);

  /// Lets go of the destination, so that whoever reads there sees the end of the stream. The number
  /// of the descriptor stays taken: lines of ours may be on their way to it.
  void close();

 private:
  std::string_view nextPiece(std::string_view bytes) const;
  void waitUntilReady() const;

  Descriptor destination_;
  bool isFile_ = false;
  bool canMove_ = false;
};

}  // namespace tarnix::linux_platform
