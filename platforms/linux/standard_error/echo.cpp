#include "platforms/linux/standard_error/echo.h"

#include <fcntl.h>
#include <limits.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

namespace tarnix::linux_platform {

namespace {

/// Lets go of bytes in a pipe.
void discard(int pipe, std::size_t count) {
  std::array<char, PIPE_BUF> buffer;
  while (count > 0) {
    const ssize_t taken = ::read(pipe, buffer.data(), std::min(count, buffer.size()));
    if (taken <= 0) {
      return;
    }
    count -= static_cast<std::size_t>(taken);
  }
}

}  // namespace

Echo::Echo(Descriptor destination) : destination_(std::move(destination)) {
  struct stat status {};
  isFile_ = ::fstat(destination_.get(), &status) == 0 && S_ISREG(status.st_mode);
  // The system moves bytes into a file without the lock on its position that a write takes. Where
  // standard output goes to the same file, they would land on top of each other.
  canMove_ = destination_.isOpen() && !isFile_;
}

// Both ways block as long as the destination does, as the host would have. What the destination
// refuses (nobody reads any more, the disk is full) is let go of, and the next bytes are tried
// again.

std::size_t Echo::move(int pipe, std::size_t count) {
  while (true) {
    const ssize_t moved =
        ::splice(pipe, nullptr, destination_.get(), nullptr, count, SPLICE_F_MOVE);
    if (moved > 0) {
      return static_cast<std::size_t>(moved);
    }
    if (moved < 0 && errno == EAGAIN) {
      waitUntilReady();
    } else if (moved < 0 && errno == EINVAL) {
      // Some devices take bytes from writes alone.
      canMove_ = false;
      return 0;
    } else if (moved == 0 || errno != EINTR) {
      discard(pipe, count);
      return count;
    }
  }
}

std::size_t Echo::write(std::string_view bytes) {
  const std::string_view piece = nextPiece(bytes);
  while (destination_.isOpen()) {
    const ssize_t written = ::write(destination_.get(), piece.data(), piece.size());
    if (written > 0) {
      return static_cast<std::size_t>(written);
    }
    if (written < 0 && errno == EAGAIN) {
      waitUntilReady();
    } else if (written == 0 || errno != EINTR) {
      break;
    }
  }
  return bytes.size();
}

/// Other processes write to the same place, and a write of this size is not mixed with theirs. Cut
/// behind a line where there is one, lines stay whole as they were when the host wrote them. It
/// also shows whoever waits for the end of the stream that a slow reader still reads.
std::string_view Echo::nextPiece(std::string_view bytes) const {
  if (isFile_ || bytes.size() <= PIPE_BUF) {
    return bytes;
  }
  const std::size_t lineFeed = bytes.rfind('\n', PIPE_BUF - 1);
  return bytes.substr(0, lineFeed == std::string_view::npos ? PIPE_BUF : lineFeed + 1);
}

/// Somebody who shares the destination asked for writes that do not wait.
void Echo::waitUntilReady() const {
  pollfd ready{.fd = destination_.get(), .events = POLLOUT, .revents = 0};
  ::poll(&ready, 1, -1);
}

void Echo::close() {
  const Descriptor nowhere(::open("/dev/null", O_WRONLY | O_CLOEXEC));
  if (destination_.isOpen() && nowhere.isOpen()) {
    ::dup3(nowhere.get(), destination_.get(), O_CLOEXEC);
  }
}

}  // namespace tarnix::linux_platform
