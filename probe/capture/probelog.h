#pragma once

#include <atomic>
#include <string_view>

#include "probe/platform/standard_error.h"

namespace tarnix {

/// Where the probe's own lines go: standard error, and from the moment on at which that is diverted
/// its original destination, so that the probe never reads its own lines.
inline constinit std::atomic<int> probelogfd = platform::standardErrorDescriptor;

/// Writes one of the probe's own lines, with its line feed, unchanged and with a single write to
/// `probelogfd`. Any thread.
void probelog(std::string_view line);

}  // namespace tarnix
