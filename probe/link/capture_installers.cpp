#include "probe/link/capture_installers.h"

#include <array>

#include "probe/bootstrap/probe_crash_handler.h"
#include "probe/capture/probe_log_capture.h"
#include "probe/capture/probe_perf_monitor.h"
#include "probe/capture/probe_screen_tracker.h"
#include "probe/capture/probe_web_view_console_capture.h"
#include "probe/network/probe_network_interceptor.h"

namespace tarnix {
namespace {

constexpr std::array<CaptureInstaller, 6> installers = {{
    {"network interceptor and session hook",
     [](const std::string&) { ProbeNetworkInterceptor::install(); }},
    {"screen tracker", [](const std::string&) { ProbeScreenTracker::install(); }},
    {"log capture", [](const std::string&) { ProbeLogCapture::install(); }},
    {"performance monitor", [](const std::string&) { ProbePerfMonitor::install(); }},
    {"web-view console capture", [](const std::string&) { ProbeWebViewConsoleCapture::install(); }},
    {"crash handler", ProbeCrashHandler::install},
}};

}  // namespace

std::span<const CaptureInstaller> captureInstallers() { return installers; }

}  // namespace tarnix
