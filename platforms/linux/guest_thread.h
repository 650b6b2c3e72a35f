#pragma once

#include <pthread.h>

#include <chrono>
#include <optional>

namespace tarnix::linux_platform {

/// Starts a thread that the host does not notice: it takes none of the host's signals. `name` has
/// at most 15 bytes. Nothing when the system refuses.
std::optional<pthread_t> startGuestThread(const char* name, void* (*entry)(void*), void* argument);

/// Waits for the thread's end, but no longer than `timeout`: the host is exiting, and nothing of
/// ours may hold it up.
void joinGuestThread(pthread_t thread, std::chrono::milliseconds timeout);

}  // namespace tarnix::linux_platform
