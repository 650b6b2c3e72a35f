#pragma once

namespace tarnix::integration {

/// Whether this process has a network and mounts of its own, so that it may bring up daemons and
/// cover folders.
bool hasOwnWorld();

}  // namespace tarnix::integration
