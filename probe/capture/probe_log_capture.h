#pragma once

#include <atomic>
#include <cstdint>

/// What the host writes to its standard error stream, as log entries. The stream goes on to where
/// it went before, untouched; each complete line becomes an entry in the state store and an
/// "event.log" for the companion. Lines of the probe's own are left out.
namespace tarnix::ProbeLogCapture {

/// Events that may wait for the main thread. A companion has room for
/// `ProbeServer::maxPendingSends` of them once the main thread gets round to it, so what comes
/// beyond has no chance to be sent, and a host that logs while its main thread is busy must not pay
/// for it in memory.
inline constexpr std::int64_t maxWaitingEvents = 4'096;

/// Starts capturing; further calls do nothing. Main thread.
void install();

namespace detail {
/// Only tests put it back.
inline constinit bool hasInstalled = false;
inline constinit std::atomic<std::int64_t> waitingEvents = 0;
}  // namespace detail

}  // namespace tarnix::ProbeLogCapture
