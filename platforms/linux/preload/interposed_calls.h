#pragma once

#include "probe/bootstrap/interposed_calls.h"

namespace tarnix::linux_platform {

/// What stands in the place of the toolkit's calls. For the life of the process.
InterposedCalls& interposedCalls();

}  // namespace tarnix::linux_platform
