#include "platforms/linux/fork_guard.h"

#include <pthread.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cstddef>

namespace tarnix::linux_platform::fork_guard {

namespace {

/// What a free slot holds; others hold a descriptor plus one.
constexpr int none = 0;
/// Two listening sockets, a handful of peers, the mDNS sockets. What finds no place is inherited.
constexpr std::size_t capacity = 64;

// No lock: the handler runs in a child in which any lock may be held by a thread that is not there.
constinit std::atomic<bool> isChild = false;
constinit std::atomic<bool> isInstalled = false;
constinit std::array<std::atomic<int>, capacity> slots{};

bool replace(int expected, int desired) {
  for (std::atomic<int>& slot : slots) {
    int value = expected;
    if (slot.compare_exchange_strong(value, desired)) {
      return true;
    }
  }
  return false;
}

void handleForkInChild() {
  isChild = true;
  for (std::atomic<int>& slot : slots) {
    if (const int held = slot.exchange(none); held != none) {
      ::close(held - 1);
    }
  }
}

}  // namespace

void install() {
  if (!isInstalled.exchange(true)) {
    pthread_atfork(nullptr, nullptr, handleForkInChild);
  }
}

bool isInChild() { return isChild; }

void closeInChild(int descriptor) { replace(none, descriptor + 1); }

void forget(int descriptor) { replace(descriptor + 1, none); }

}  // namespace tarnix::linux_platform::fork_guard
