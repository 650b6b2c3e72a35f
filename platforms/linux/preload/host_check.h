#pragma once

namespace tarnix::linux_platform {

/// Whether this process is one to probe: an application that has a supported toolkit loaded. Not a
/// process that runs with more rights than its caller, nor a helper that a host starts for its own
/// web pages.
bool isHost(int argumentCount, const char* const* arguments);

}  // namespace tarnix::linux_platform
