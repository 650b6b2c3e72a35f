#pragma once

#include <sys/types.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "platforms/linux/descriptor.h"
#include "platforms/linux/standard_error/echo.h"
#include "probe/platform/standard_error.h"

namespace tarnix::linux_platform {

/// The way of standard error through a pipe, and the thread that reads it.
///
/// Bytes move on inside the system wherever the destination allows it, and a second pipe gets a
/// copy for the observer: so it makes no difference at which moment the process ends. Elsewhere
/// (files that are appended to) they are read and written, and a process that is killed in between
/// loses the piece in its hands.
///
/// The host may do with descriptor 2 as it likes: once it has closed it, or put something else in
/// its place, and no child holds it any more, the stream has ended and so does the thread. Children
/// inherit the pipe, so that what they write keeps its order with what the host writes; the keeper
/// (keeper_process.h) sees to the stream when this process has ended and they have not.
class Diversion {
 public:
  /// Never destroyed: its thread and the exit handler outlive everything of the host.
  Diversion(Descriptor readEnd, Descriptor destination, platform::StandardErrorObserver observer);
  Diversion(const Diversion&) = delete;
  Diversion& operator=(const Diversion&) = delete;

  int destination() const { return echo_.descriptor(); }

  /// Whether the thread runs. Once.
  bool start();

  /// Waits until everything that has been written so far has arrived at the destination. Gives up,
  /// and answers false, when that has taken nothing for `patience`. Takes no lock. Not to be called
  /// by the thread that reads.
  bool settle(std::chrono::milliseconds patience) const;

  /// Puts the original back in place of descriptor 2, if that is still the pipe. Nothing that was
  /// written before is lost or overtaken, short of a destination that takes nothing.
  void undo();

  /// Whether the calling process is the one that was diverted, and no child of it.
  bool isOwnProcess() const;

 private:
  enum class Outcome { goesOn, ended };

  void run() noexcept;
  Outcome moveSome();
  Outcome readSome();
  Outcome afterFailure(ssize_t count, int error);
  void waitForMore() const;
  std::optional<std::uint64_t> writtenSoFar() const;
  bool leadsHere(int descriptor) const;

  const Descriptor readEnd_;
  /// What is moved on is looked at here.
  Descriptor copyReadEnd_;
  Descriptor copyWriteEnd_;
  Echo echo_;
  const platform::StandardErrorObserver observer_;
  const pid_t process_;
  /// Bytes that are no longer in the pipe, and bytes that the destination has. Exact while
  /// `changes_` is even; odd means that the pipe is being read right now.
  std::atomic<std::uint64_t> taken_ = 0;
  std::atomic<std::uint64_t> passedOn_ = 0;
  /// Bytes at the start of the buffer that wait for the rest of their line.
  std::size_t held_ = 0;
  std::atomic<std::uint64_t> changes_ = 0;
  std::atomic<bool> hasEnded_ = false;
};

}  // namespace tarnix::linux_platform
