#pragma once

namespace tarnix::linux_platform {

/// Whether the other end of this loopback TCP connection is a socket of the user that this process
/// runs as, or of root. A peer whose owner cannot be told does not count: its socket may be closed
/// already, and a socket without owner looks like one of root's.
bool isPeerTrusted(int descriptor);

}  // namespace tarnix::linux_platform
