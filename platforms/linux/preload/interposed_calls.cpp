#include "platforms/linux/preload/interposed_calls.h"

namespace tarnix::linux_platform {

namespace {

constinit InterposedCalls calls;

}  // namespace

InterposedCalls& interposedCalls() { return calls; }

}  // namespace tarnix::linux_platform
