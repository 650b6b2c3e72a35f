#include "platforms/linux/guest_thread.h"

#include <csignal>
#include <ctime>

namespace tarnix::linux_platform {

std::optional<pthread_t> startGuestThread(const char* name, void* (*entry)(void*), void* argument) {
  // The mask is inherited. Set here and not by the new thread, it leaves no moment in which one of
  // the host's handlers could run there.
  sigset_t all{};
  sigset_t previous{};
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &previous);
  pthread_t thread{};
  const bool isStarted = pthread_create(&thread, nullptr, entry, argument) == 0;
  pthread_sigmask(SIG_SETMASK, &previous, nullptr);
  if (!isStarted) {
    return std::nullopt;
  }
  pthread_setname_np(thread, name);
  return thread;
}

void joinGuestThread(pthread_t thread, std::chrono::milliseconds timeout) {
  timespec deadline{};
  clock_gettime(CLOCK_REALTIME, &deadline);
  const std::chrono::nanoseconds end =
      std::chrono::seconds(deadline.tv_sec) + std::chrono::nanoseconds(deadline.tv_nsec) + timeout;
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(end);
  deadline.tv_sec = seconds.count();
  deadline.tv_nsec = (end - seconds).count();
  pthread_timedjoin_np(thread, nullptr, &deadline);
}

}  // namespace tarnix::linux_platform
