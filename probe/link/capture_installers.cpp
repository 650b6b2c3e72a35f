#include "probe/link/capture_installers.h"

#include <array>

#include "probe/network/probe_network_interceptor.h"

namespace tarnix {
namespace {

constexpr std::array<CaptureInstaller, 6> installers = {{
    {"network interceptor and session hook",
     [](const std::string&) { ProbeNetworkInterceptor::install(); }},
    {"screen tracker", nullptr},
    {"log capture", nullptr},
    {"performance monitor", nullptr},
    {"web-view console capture", nullptr},
    {"crash handler", nullptr},
}};

}  // namespace

std::span<const CaptureInstaller> captureInstallers() { return installers; }

}  // namespace tarnix
