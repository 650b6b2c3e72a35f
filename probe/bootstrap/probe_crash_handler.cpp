#include "probe/bootstrap/probe_crash_handler.h"

#include <algorithm>
#include <optional>

#include "probe/capture/probelog.h"
#include "probe/link/indented_json.h"
#include "probe/link/json_codec.h"
#include "probe/model/crash_report.h"
#include "probe/model/iso8601.h"
#include "probe/model/probe_state.h"
#include "probe/model/utf8.h"
#include "probe/platform/file.h"
#include "probe/platform/main_thread.h"
#include "probe/platform/platform.h"

namespace tarnix {
namespace {

using namespace platform::fatal_signal;

std::string& bundleIdentifier() {
  static std::string& identifier = *new std::string("unknown");
  return identifier;
}

std::string signalName(int number) {
  switch (number) {
    case illegalInstruction:
      return "SIGILL";
    case abort:
      return "SIGABRT";
    case floatingPointException:
      return "SIGFPE";
    case busError:
      return "SIGBUS";
    case segmentationViolation:
      return "SIGSEGV";
    default:
      return "SIG" + std::to_string(number);
  }
}

std::string lastRequest() {
  const std::vector<TransferableNetworkRequest> requests = ProbeState::shared().recentRequests();
  if (requests.empty()) {
    return "none";
  }
  const TransferableNetworkRequest& last = requests.back();
  return last.method + " " + last.url + " → " + std::to_string(last.statusCode.value_or(0));
}

/// A name or a reason comes from the host, in whatever encoding it likes; it must not cost the
/// report.
CrashReport inUtf8(CrashReport report) {
  for (std::string* text :
       {&report.name, &report.reason, &report.screen, &report.lastRequest, &report.bundleId}) {
    *text = utf8::wellFormed(*text);
  }
  for (std::string& frame : report.stack) {
    frame = utf8::wellFormed(frame);
  }
  return report;
}

}  // namespace

namespace ProbeCrashHandler {

void install(const std::string& bundleId) {
  platform::assertMainThread();
  if (detail::installed) {
    return;
  }
  detail::installed = true;
  bundleIdentifier() = bundleId;
  platform::setUncaughtExceptionHandler(probeExceptionHandler);
  for (const int signal :
       {abort, segmentationViolation, busError, floatingPointException, illegalInstruction}) {
    platform::setSignalHandler(signal, probeSignalHandler);
  }
  probelog("[TarnixProbe] Crash handler installed for " + bundleId + "\n");
}

void handleSignal(const std::string& name) {
  writeCrash("Signal", name, "Process received " + name, platform::callStackSymbols());
}

void writeCrash(const std::string& type, const std::string& name, const std::string& reason,
                const std::vector<std::string>& stack) {
  const CrashReport report = inUtf8({.type = type,
                                     .name = name,
                                     .reason = reason,
                                     .stack = stack,
                                     .screen = ProbeState::shared().currentScreen(),
                                     .lastRequest = lastRequest(),
                                     .bundleId = bundleIdentifier(),
                                     .timestamp = iso8601(platform::current().clock->now())});
  const std::optional<std::string> json = encodeJson(report);
  if (json) {
    // An address or a reason in it may be nobody else's business.
    platform::createFile(reportPath(bundleIdentifier()), indentedJson(*json),
                         platform::FileReaders::owner);
  }
}

std::string reportPath(std::string_view bundleId) {
  std::string name(bundleId);
  std::replace(name.begin(), name.end(), '.', '_');
  return std::string(reportPathPrefix) + name + ".json";
}

}  // namespace ProbeCrashHandler

void probeExceptionHandler(const platform::UncaughtException& exception) {
  try {
    ProbeCrashHandler::writeCrash("NSException", exception.name,
                                  exception.reason.value_or("Unknown"), exception.callStackSymbols);
  } catch (...) {
    // Out of memory: no report, and the host ends all the same.
  }
}

void probeSignalHandler(int number) {
  try {
    ProbeCrashHandler::handleSignal(signalName(number));
  } catch (...) {
    // As above.
  }
}

}  // namespace tarnix
