#pragma once

#include <cstdlib>

#include "probe/platform/platform.h"

namespace tarnix::platform {

/// Stands at the head of whatever belongs to the main thread. Debug builds end the process when it
/// runs elsewhere; release builds check nothing.
inline void assertMainThread() {
#ifndef NDEBUG
  if (!current().mainQueue->isCurrent()) {
    std::abort();
  }
#endif
}

}  // namespace tarnix::platform
