#include "probe/platform/standard_error.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <utility>

#include "platforms/linux/descriptor.h"
#include "platforms/linux/fork_guard.h"
#include "platforms/linux/standard_error/diversion.h"
#include "platforms/linux/standard_error/keeper_process.h"

namespace tarnix::platform {

namespace {

using linux_platform::Descriptor;
using linux_platform::Diversion;

/// What an unprivileged process may ask for: the host is to wait for its log's reader as little as
/// it did for the log.
constexpr int pipeCapacity = 1'048'576;

/// Where our descriptors lie, so that the host gets the low numbers that it would have got.
constexpr int lowestDescriptor = 200;

constinit Diversion* diversion = nullptr;

/// Ours, and closed when a program is executed. Nothing when `descriptor` is not open.
Descriptor duplicateAside(int descriptor) {
  const int high = ::fcntl(descriptor, F_DUPFD_CLOEXEC, lowestDescriptor);
  return Descriptor(high >= 0 ? high : ::fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

struct Pipe {
  Descriptor readEnd;
  Descriptor writeEnd;
};

Pipe makePipe() {
  int ends[2] = {-1, -1};
  if (::pipe2(ends, O_CLOEXEC) != 0) {
    return {};
  }
  const Descriptor readEnd(ends[0]);
  const Descriptor writeEnd(ends[1]);
  return {duplicateAside(readEnd.get()), duplicateAside(writeEnd.get())};
}

/// Descriptor 2 need not be a stream of diagnostics: a host that was started without one gives the
/// number to the first file it opens. Files that are read as well are not touched.
bool mayDivert() {
  struct stat status {};
  if (::fstat(STDERR_FILENO, &status) != 0) {
    return true;
  }
  const int mode = ::fcntl(STDERR_FILENO, F_GETFL) & O_ACCMODE;
  return S_ISCHR(status.st_mode) || S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode) ||
         (S_ISREG(status.st_mode) && mode == O_WRONLY);
}

/// The host finds on the pipe what it set on its stream: whether it waits when the stream is full,
/// and whether children have it.
bool replaceStandardError(int writeEnd) {
  const int waiting = ::fcntl(STDERR_FILENO, F_GETFL);
  const int inheriting = ::fcntl(STDERR_FILENO, F_GETFD);
  if (waiting >= 0 && (waiting & O_NONBLOCK) != 0) {
    ::fcntl(writeEnd, F_SETFL, O_NONBLOCK);
  }
  const bool isClosedOnExec = inheriting >= 0 && (inheriting & FD_CLOEXEC) != 0;
  return ::dup3(writeEnd, STDERR_FILENO, isClosedOnExec ? O_CLOEXEC : 0) >= 0;
}

void undoAtExit() {
  if (diversion->isOwnProcess()) {
    diversion->undo();
  }
}

/// Both ways out on which a process may still act. Handlers of the host's that were registered
/// earlier run later, and find their stream as it was.
void registerExitHandlers() {
  static_cast<void>(std::atexit(undoAtExit));
  static_cast<void>(std::at_quick_exit(undoAtExit));
}

}  // namespace

std::optional<int> divertStandardError(StandardErrorObserver observer) {
  if (diversion != nullptr || !mayDivert()) {
    return std::nullopt;
  }
  Pipe pipe = makePipe();
  if (!pipe.readEnd.isOpen() || !pipe.writeEnd.isOpen()) {
    return std::nullopt;
  }
  ::fcntl(pipe.writeEnd.get(), F_SETPIPE_SZ, pipeCapacity);
  ::fcntl(pipe.readEnd.get(), F_SETFL, O_NONBLOCK);
  const int readEnd = pipe.readEnd.get();
  auto made =
      std::make_unique<Diversion>(std::move(pipe.readEnd), duplicateAside(STDERR_FILENO), observer);
  if (!made->start()) {
    return std::nullopt;
  }
  // From here on the thread uses it: it lives as long as the process.
  diversion = made.release();
  if (diversion->destination() >= 0) {
    linux_platform::startKeeper(readEnd, diversion->destination());
  }
  if (!replaceStandardError(pipe.writeEnd.get())) {
    return std::nullopt;
  }
  linux_platform::fork_guard::install();
  linux_platform::fork_guard::closeInChild(readEnd);
  registerExitHandlers();
  return diversion->destination();
}

void settleStandardError(std::chrono::milliseconds patience) {
  if (diversion != nullptr && diversion->isOwnProcess()) {
    diversion->settle(patience);
  }
}

}  // namespace tarnix::platform
