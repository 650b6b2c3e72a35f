#pragma once

#include <pthread.h>

#include <cerrno>
#include <csignal>
#include <ctime>

namespace tarnix::linux_platform {

/// Keeps a write to a destination that nobody reads any more from ending the host, while it lives:
/// it was not the host that wrote. Any thread; of the C library only.
class PipeSignalGuard {
 public:
  PipeSignalGuard() {
    sigemptyset(&pipeSignal_);
    sigaddset(&pipeSignal_, SIGPIPE);
    sigset_t pending{};
    sigpending(&pending);
    // One that is waiting already is the host's, and covers ours.
    isHostsOwnPending_ = sigismember(&pending, SIGPIPE) == 1;
    pthread_sigmask(SIG_BLOCK, &pipeSignal_, &previous_);
  }
  PipeSignalGuard(const PipeSignalGuard&) = delete;
  PipeSignalGuard& operator=(const PipeSignalGuard&) = delete;
  ~PipeSignalGuard() {
    const timespec now{};
    while (!isHostsOwnPending_ && sigtimedwait(&pipeSignal_, nullptr, &now) < 0 && errno == EINTR) {
    }
    pthread_sigmask(SIG_SETMASK, &previous_, nullptr);
  }

 private:
  sigset_t pipeSignal_{};
  sigset_t previous_{};
  bool isHostsOwnPending_ = false;
};

}  // namespace tarnix::linux_platform
