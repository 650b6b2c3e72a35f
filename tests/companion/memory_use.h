#pragma once

#include <sys/resource.h>

#include <cstddef>

namespace tarnix::companion {

/// The most that this process ever had in memory, in bytes.
inline std::size_t peakMemory() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
}

}  // namespace tarnix::companion
