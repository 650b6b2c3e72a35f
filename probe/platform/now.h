#pragma once

#include "probe/link/timestamp.h"
#include "probe/platform/platform.h"

namespace tarnix::platform {

/// The time of day as it travels. Any thread.
inline Timestamp now() { return Timestamp::from(current().clock->now()); }

}  // namespace tarnix::platform
