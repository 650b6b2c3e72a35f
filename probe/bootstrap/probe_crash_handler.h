#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "probe/platform/crash.h"

namespace tarnix {

/// Leaves a report in /tmp when the host dies of an uncaught exception or of a fatal signal. A
/// later report of the same host replaces an earlier one. Nothing here ends the host: an exception
/// goes on to its end, a signal counts as handled.
namespace ProbeCrashHandler {

/// Report files are this, the bundle identifier with underscores for dots, and ".json".
inline constexpr std::string_view reportPathPrefix = "/tmp/tarnix_crash_";

/// Further calls do nothing. Main thread.
void install(const std::string& bundleId);

/// Writes the report of a signal, with the calls of the thread that it arrived at.
void handleSignal(const std::string& name);

/// Writes a report, whole or not at all. Any thread; takes the lock of the state store.
void writeCrash(const std::string& type, const std::string& name, const std::string& reason,
                const std::vector<std::string>& stack);

std::string reportPath(std::string_view bundleId);

namespace detail {
/// Only tests put it back.
inline constinit bool installed = false;
}  // namespace detail

}  // namespace ProbeCrashHandler

/// The hooks. Thread of the crash, or one that stands in for it.
void probeExceptionHandler(const platform::UncaughtException& exception);
void probeSignalHandler(int number);

}  // namespace tarnix
