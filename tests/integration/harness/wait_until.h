#pragma once

#include <chrono>
#include <thread>

namespace tarnix::integration {

/// Bounds what a test waits for. A machine that is busy with other builds needs much of it.
inline constexpr std::chrono::seconds patience{60};

/// Asks again and again; returns the first value that is true, or the last one.
template <class Condition>
auto waitUntil(Condition condition, std::chrono::steady_clock::duration time = patience) {
  const auto deadline = std::chrono::steady_clock::now() + time;
  while (true) {
    auto value = condition();
    if (value || std::chrono::steady_clock::now() > deadline) {
      return value;
    }
    constexpr std::chrono::milliseconds pause{10};
    std::this_thread::sleep_for(pause);
  }
}

}  // namespace tarnix::integration
