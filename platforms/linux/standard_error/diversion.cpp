#include "platforms/linux/standard_error/diversion.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <ctime>
#include <string_view>
#include <utility>

#include "platforms/linux/guest_thread.h"

namespace tarnix::linux_platform {

namespace {

/// What is read at once. Together with the bound of an unfinished line it bounds the longest one.
constexpr std::size_t pieceSize = 65'536;
constexpr std::chrono::microseconds settleInterval{100};
constexpr std::chrono::milliseconds patienceAtTheEnd{2'000};

/// Of the one thread that reads.
std::array<char, pieceSize> buffer;

/// What fills the buffer was cut where the buffer ends. Others may write to the same place, so the
/// last line waits for its rest, which is in the pipe already.
std::string_view wholeLines(std::string_view read) {
  const std::size_t lineFeed =
      read.size() == buffer.size() ? read.rfind('\n') : std::string_view::npos;
  return lineFeed == std::string_view::npos ? read : read.substr(0, lineFeed + 1);
}

void sleepFor(std::chrono::nanoseconds duration) {
  const timespec time{.tv_sec = 0, .tv_nsec = duration.count()};
  ::nanosleep(&time, nullptr);
}

}  // namespace

Diversion::Diversion(Descriptor readEnd, Descriptor destination,
                     platform::StandardErrorObserver observer)
    : readEnd_(std::move(readEnd)),
      echo_(std::move(destination)),
      observer_(observer),
      process_(::getpid()) {
  int ends[2] = {-1, -1};
  if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) == 0) {
    copyReadEnd_ = Descriptor(ends[0]);
    copyWriteEnd_ = Descriptor(ends[1]);
  }
}

bool Diversion::start() {
  const auto entry = [](void* self) -> void* {
    static_cast<Diversion*>(self)->run();
    return nullptr;
  };
  return startGuestThread("tarnix-log", entry, this).has_value();
}

void Diversion::run() noexcept {
  Outcome outcome = Outcome::goesOn;
  while (outcome == Outcome::goesOn) {
    outcome = copyReadEnd_.isOpen() && echo_.canMove() ? moveSome() : readSome();
  }
  hasEnded_ = true;
}

Diversion::Outcome Diversion::moveSome() {
  const ssize_t copied = ::tee(readEnd_.get(), copyWriteEnd_.get(), pieceSize, SPLICE_F_NONBLOCK);
  if (copied <= 0) {
    return afterFailure(copied, errno);
  }
  const auto count = static_cast<std::size_t>(copied);
  std::size_t moved = 0;
  while (moved < count && echo_.canMove()) {
    ++changes_;
    const std::size_t some = echo_.move(readEnd_.get(), count - moved);
    taken_ += some;
    passedOn_ += some;
    ++changes_;
    moved += some;
  }
  if (::read(copyReadEnd_.get(), buffer.data(), count) != copied) {
    return Outcome::ended;
  }
  // What could not be moved is read again, from the pipe that it is still in.
  if (moved > 0) {
    observer_({buffer.data(), moved});
  }
  return Outcome::goesOn;
}

Diversion::Outcome Diversion::readSome() {
  ++changes_;
  const ssize_t count = ::read(readEnd_.get(), buffer.data() + held_, buffer.size() - held_);
  const int error = errno;
  taken_ += count > 0 ? static_cast<std::uint64_t>(count) : 0;
  ++changes_;
  if (count <= 0 && held_ == 0) {
    return afterFailure(count, error);
  }
  const std::string_view read(buffer.data(),
                              held_ + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  const std::string_view piece = count > 0 ? wholeLines(read) : read;
  for (std::size_t written = 0; written < piece.size();) {
    const std::size_t some = echo_.write(piece.substr(written));
    passedOn_ += some;
    written += some;
  }
  observer_(piece);
  held_ = read.size() - piece.size();
  std::memmove(buffer.data(), buffer.data() + piece.size(), held_);
  return Outcome::goesOn;
}

Diversion::Outcome Diversion::afterFailure(ssize_t count, int error) {
  if (count == 0) {
    echo_.close();
    return Outcome::ended;
  }
  if (error == EAGAIN) {
    waitForMore();
    return Outcome::goesOn;
  }
  // Anything else: the host has closed our descriptors with all its others.
  return error == EINTR ? Outcome::goesOn : Outcome::ended;
}

void Diversion::waitForMore() const {
  pollfd ready{.fd = readEnd_.get(), .events = POLLIN, .revents = 0};
  ::poll(&ready, 1, -1);
}

/// Nothing when the pipe was being read.
std::optional<std::uint64_t> Diversion::writtenSoFar() const {
  const std::uint64_t before = changes_;
  const std::uint64_t taken = taken_;
  int waiting = 0;
  if (::ioctl(readEnd_.get(), FIONREAD, &waiting) != 0) {
    return taken;
  }
  if (before % 2 != 0 || changes_ != before) {
    return std::nullopt;
  }
  return taken + static_cast<std::uint64_t>(waiting);
}

bool Diversion::settle(std::chrono::milliseconds patience) const {
  std::optional<std::uint64_t> wanted;
  std::uint64_t last = passedOn_;
  std::chrono::nanoseconds idle{0};
  while (idle < patience && !hasEnded_) {
    if (!wanted) {
      wanted = writtenSoFar();
    }
    if (wanted && last >= *wanted) {
      return true;
    }
    sleepFor(settleInterval);
    const std::uint64_t now = passedOn_;
    idle = now == last ? idle + settleInterval : std::chrono::nanoseconds(0);
    last = now;
  }
  return hasEnded_;
}

void Diversion::undo() {
  if (hasEnded_) {
    return;
  }
  const bool hasSettled = settle(patienceAtTheEnd);
  if (destination() >= 0 && leadsHere(STDERR_FILENO)) {
    ::dup2(destination(), STDERR_FILENO);
  }
  // What other threads wrote in between.
  if (hasSettled) {
    settle(patienceAtTheEnd);
  }
}

bool Diversion::leadsHere(int descriptor) const {
  struct stat one {};
  struct stat other {};
  return ::fstat(descriptor, &one) == 0 && ::fstat(readEnd_.get(), &other) == 0 &&
         one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

bool Diversion::isOwnProcess() const { return ::getpid() == process_; }

}  // namespace tarnix::linux_platform
