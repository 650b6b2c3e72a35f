#include "platforms/linux/crash/crash_reporter.h"

#include <cerrno>
#include <ctime>

#include "platforms/linux/guest_thread.h"

namespace tarnix::linux_platform {

namespace {

thread_local bool isReporterThread = false;

timespec deadlineAfter(std::chrono::seconds duration) {
  timespec deadline{};
  ::clock_gettime(CLOCK_MONOTONIC, &deadline);
  deadline.tv_sec += duration.count();
  return deadline;
}

bool waitUntil(sem_t& semaphore, const timespec& deadline) {
  int result = 0;
  do {
    result = ::sem_clockwait(&semaphore, CLOCK_MONOTONIC, &deadline);
  } while (result != 0 && errno == EINTR);
  return result == 0;
}

bool isBefore(const timespec& deadline) {
  const timespec now = deadlineAfter(std::chrono::seconds(0));
  return now.tv_sec < deadline.tv_sec ||
         (now.tv_sec == deadline.tv_sec && now.tv_nsec < deadline.tv_nsec);
}

}  // namespace

CrashReporter& CrashReporter::shared() {
  static CrashReporter& reporter = *new CrashReporter;
  return reporter;
}

CrashReporter::CrashReporter() {
  ::sem_init(&wanted_, 0, 0);
  ::sem_init(&done_, 0, 0);
}

bool CrashReporter::start() {
  const auto entry = [](void* self) -> void* {
    static_cast<CrashReporter*>(self)->run();
    return nullptr;
  };
  isRunning_ = startGuestThread("tarnix-crash", entry, this).has_value();
  return isRunning_;
}

void CrashReporter::run() noexcept {
  isReporterThread = true;
  while (true) {
    while (::sem_wait(&wanted_) != 0) {
    }
    handler_(number_);
    ::sem_post(&done_);
  }
}

void CrashReporter::report(platform::SignalHandler handler, int number, const CallStack& stack) {
  if (!isRunning_) {
    return;
  }
  const timespec deadline = deadlineAfter(patience);
  constexpr timespec interval{.tv_sec = 0, .tv_nsec = 1'000'000};
  while (isBusy_.test_and_set()) {
    if (!isBefore(deadline)) {
      return;
    }
    ::nanosleep(&interval, nullptr);
  }
  handler_ = handler;
  number_ = number;
  stack_ = stack;
  ::sem_post(&wanted_);
  // A reporter that did not come to its end stays busy, and nobody else asks it.
  if (waitUntil(done_, deadline)) {
    isBusy_.clear();
  }
}

const CallStack* CrashReporter::currentStack() const {
  return isReporterThread ? &stack_ : nullptr;
}

}  // namespace tarnix::linux_platform
