#pragma once

namespace tarnix::linux_platform {

/// Whether this process is a host and has the core in it. What the preloaded library puts in place
/// of the system's own passes everything on untouched elsewhere.
bool isInHost();

}  // namespace tarnix::linux_platform
