#pragma once

#include <array>

namespace tarnix::linux_platform {

/// Starts a program that has nothing to do with the host: not its child, in a session of its own,
/// with an empty environment, default signals, "/" as its directory, and these descriptors as 0, 1
/// and 2 and no others. Returns whether the program was executed; the host sees neither signal nor
/// child.
bool startDetachedProcess(const char* path, const char* argument,
                          const std::array<int, 3>& descriptors);

}  // namespace tarnix::linux_platform
