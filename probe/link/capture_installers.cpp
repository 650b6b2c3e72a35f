#include "probe/link/capture_installers.h"

#include <array>

#include "probe/bootstrap/probe_crash_handler.h"
#include "probe/capture/probe_log_capture.h"

namespace tarnix {
namespace {

constexpr std::array<CaptureInstaller, 6> installers = {{
    {"network interceptor and session hook", nullptr},
    {"screen tracker", nullptr},
    {"log capture", [](const std::string&) { ProbeLogCapture::install(); }},
    {"performance monitor", nullptr},
    {"web-view console capture", nullptr},
    {"crash handler", ProbeCrashHandler::install},
}};

}  // namespace

std::span<const CaptureInstaller> captureInstallers() { return installers; }

}  // namespace tarnix
