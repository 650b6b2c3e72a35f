#pragma once

#include <semaphore.h>

#include <atomic>
#include <chrono>

#include "platforms/linux/crash/call_stack.h"
#include "probe/platform/crash.h"

namespace tarnix::linux_platform {

/// Runs signal handlers on a thread of its own, while the thread that the signal arrived at waits
/// in its handler. A thread that has crashed may hold any lock, the allocator's first of all, and
/// its stack may be at its end; the reporter's thread has neither trouble. Where it has to wait for
/// such a lock all the same there is no report, and the host ends as it would have.
class CrashReporter {
 public:
  /// Long enough to read the debug information of a large application.
  static constexpr std::chrono::seconds patience{10};

  /// Never destroyed.
  static CrashReporter& shared();

  /// Whether the thread runs. Once.
  bool start();

  /// Has `handler` called with `number`, and waits for it. One thread at a time: others wait for
  /// their turn. For signal handlers.
  void report(platform::SignalHandler handler, int number, const CallStack& stack);

  /// The calls that are being reported; null unless the calling thread is the reporter's.
  const CallStack* currentStack() const;

 private:
  CrashReporter();
  void run() noexcept;

  std::atomic<bool> isRunning_ = false;
  std::atomic_flag isBusy_;
  sem_t wanted_{};
  sem_t done_{};
  platform::SignalHandler handler_ = nullptr;
  int number_ = 0;
  CallStack stack_;
};

}  // namespace tarnix::linux_platform
