#include <cxxabi.h>
#include <pthread.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <exception>
#include <typeinfo>
#include <utility>

#include "platforms/linux/crash/call_stack.h"
#include "platforms/linux/crash/code_location.h"
#include "platforms/linux/crash/crash_reporter.h"
#include "platforms/linux/thread_signal_stack.h"
#include "probe/platform/crash.h"
#include "probe/platform/standard_error.h"

namespace tarnix::platform {

namespace {

using namespace linux_platform;

/// The system's number beside the one that reports know.
constexpr std::array<std::pair<int, int>, 5> signals = {{
    {SIGILL, fatal_signal::illegalInstruction},
    {SIGABRT, fatal_signal::abort},
    {SIGFPE, fatal_signal::floatingPointException},
    {SIGBUS, fatal_signal::busError},
    {SIGSEGV, fatal_signal::segmentationViolation},
}};

/// How long a thread rests that comes back to the instruction that it crashed at. Its handler
/// leaves it where it was, so it would fill a processor and the disk with the same report.
constexpr timespec restBeforeRepetition{.tv_sec = 0, .tv_nsec = 250'000'000};
constexpr std::chrono::milliseconds patienceForTheLog{200};
/// Of a millisecond each.
constexpr int mostRestsForAReport = 5'000;

constinit std::atomic<SignalHandler> signalHandler = nullptr;
constinit std::atomic<UncaughtExceptionHandler> exceptionHandler = nullptr;
constinit std::atomic<pid_t> installedProcess = 0;
constinit std::atomic<bool> endsByException = false;
/// The first thread with an uncaught exception; 0 while there is none.
constinit std::atomic<pid_t> reportingThread = 0;
constinit std::atomic<bool> hasReported = false;
constinit std::atomic<const void*> lastInstruction = nullptr;

int reportedNumber(int systemNumber) {
  for (const auto& [system, reported] : signals) {
    if (system == systemNumber) {
      return reported;
    }
  }
  return systemNumber;
}

void takeDefaultAction(int number) {
  struct sigaction action {};
  action.sa_handler = SIG_DFL;
  ::sigaction(number, &action, nullptr);
}

/// A child that goes on without a program of its own has the handlers, but nobody to report to. It
/// ends as it would have.
bool isChild(int number) {
  if (::getpid() == installedProcess) {
    return false;
  }
  takeDefaultAction(number);
  return true;
}

void onSignal(int number, siginfo_t*, void* context) {
  const int savedError = errno;
  if (isChild(number)) {
    errno = savedError;
    return;
  }
  if (endsByException) {
    // The report is written, and the runtime is on its way out. A fault there must not hold it up.
    takeDefaultAction(number);
    errno = savedError;
    return;
  }
  const CallStack stack = captureInterruptedCallStack(context);
  if (lastInstruction.exchange(stack.addresses[0]) == stack.addresses[0]) {
    ::nanosleep(&restBeforeRepetition, nullptr);
  }
  CrashReporter::shared().report(signalHandler, reportedNumber(number), stack);
  settleStandardError(patienceForTheLog);
  errno = savedError;
}

/// What the exception says of itself. Called while it is the current one.
std::optional<std::string> reasonOfCurrentException() {
  const auto textAt = [](const char* text) {
    return text != nullptr ? std::optional<std::string>(text) : std::nullopt;
  };
  try {
    throw;
  } catch (const std::exception& exception) {
    return textAt(exception.what());
  } catch (const std::string& text) {
    return text;
  } catch (const char* text) {
    return textAt(text);
  } catch (...) {
    return std::nullopt;
  }
}

void reportCurrentException() {
  const std::type_info* const type = abi::__cxa_current_exception_type();
  const UncaughtExceptionHandler handler = exceptionHandler;
  // Without an exception it is somebody's decision to abort, and that is a signal.
  if (type == nullptr || handler == nullptr || ::getpid() != installedProcess) {
    return;
  }
  const CallStack stack = captureCallStack();
  handler({demangled(type->name()), reasonOfCurrentException(), symbolsOf(stack)});
  endsByException = true;
}

/// For a thread whose exception is uncaught while that of another is being reported: its way out
/// would end the process in the middle of the report, or put one of a signal in its place.
void waitForTheReport() {
  constexpr timespec interval{.tv_sec = 0, .tv_nsec = 1'000'000};
  for (int rests = 0; !hasReported && rests < mostRestsForAReport; ++rests) {
    ::nanosleep(&interval, nullptr);
  }
}

/// The runtime's own way out follows, with the line that it writes.
[[noreturn]] void onTerminate() {
  const pid_t self = ::gettid();
  pid_t reporting = 0;
  if (reportingThread.compare_exchange_strong(reporting, self)) {
    try {
      reportCurrentException();
    } catch (...) {
      // No report.
    }
    hasReported = true;
  } else if (reporting != self && ::getpid() == installedProcess) {
    waitForTheReport();
  }
  __gnu_cxx::__verbose_terminate_handler();
  std::abort();
}

void prepare() {
  if (installedProcess.exchange(::getpid()) == 0) {
    prepareCallStacks();
    CrashReporter::shared().start();
    // This one is the main thread. Threads that start later get theirs when they do.
    giveSignalStackToThisThread();
  }
}

}  // namespace

void setUncaughtExceptionHandler(UncaughtExceptionHandler handler) {
  prepare();
  exceptionHandler = handler;
  std::set_terminate(onTerminate);
}

void setSignalHandler(int number, SignalHandler handler) {
  prepare();
  signalHandler = handler;
  struct sigaction action {};
  action.sa_sigaction = onSignal;
  action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_RESTART;
  for (const auto& [system, reported] : signals) {
    if (reported == number) {
      ::sigaction(system, &action, nullptr);
    }
  }
}

std::vector<std::string> callStackSymbols() {
  const CallStack* const reported = CrashReporter::shared().currentStack();
  return symbolsOf(reported != nullptr ? *reported : captureCallStack());
}

}  // namespace tarnix::platform
