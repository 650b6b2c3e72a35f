#pragma once

#include <optional>
#include <string>
#include <vector>

/// How a process learns that it is coming to a bad end.
namespace tarnix::platform {

/// The fatal signals, by the numbers that crash reports know them by. The system's own numbers may
/// differ, and are the platform's to translate.
namespace fatal_signal {
inline constexpr int illegalInstruction = 4;
inline constexpr int abort = 6;
inline constexpr int floatingPointException = 8;
inline constexpr int busError = 10;
inline constexpr int segmentationViolation = 11;
}  // namespace fatal_signal

struct UncaughtException {
  /// The type, as a person writes it.
  std::string name;
  std::optional<std::string> reason;
  std::vector<std::string> callStackSymbols;
};

using UncaughtExceptionHandler = void (*)(const UncaughtException& exception);
using SignalHandler = void (*)(int number);

/// `handler` is called for an exception that nobody catches, on the thread that threw it, and then
/// the process ends as it does without a handler. Replaces an earlier handler, the host's too.
/// Handlers do not throw.
void setUncaughtExceptionHandler(UncaughtExceptionHandler handler);

/// `handler` is called each time that the signal arrives, while the thread that it arrived at
/// stands still; then that thread goes on where it was. A handler that takes very long is left
/// behind. An abort that ends an uncaught exception is part of that exception, and no signal.
/// Replaces an earlier handler, the host's too.
void setSignalHandler(int number, SignalHandler handler);

/// The calls that led here, innermost first, one a string; inside a signal handler those of the
/// thread that the signal arrived at.
std::vector<std::string> callStackSymbols();

}  // namespace tarnix::platform
