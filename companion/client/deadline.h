#pragma once

#include <algorithm>
#include <chrono>

namespace tarnix::companion {

using Deadline = std::chrono::steady_clock::time_point;

inline Deadline deadlineIn(std::chrono::steady_clock::duration time) {
  return std::chrono::steady_clock::now() + time;
}

inline bool isOver(Deadline deadline) { return std::chrono::steady_clock::now() >= deadline; }

/// Never negative.
inline std::chrono::steady_clock::duration timeUntil(Deadline deadline) {
  return std::max(deadline - std::chrono::steady_clock::now(),
                  std::chrono::steady_clock::duration::zero());
}

}  // namespace tarnix::companion
