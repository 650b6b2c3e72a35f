#pragma once

/// Keeps the probe out of children that the host makes with `fork` and that go on without `exec`:
/// they have the memory of the probe, but none of its threads. Any thread.
namespace tarnix::linux_platform::fork_guard {

/// Starts guarding; once for the process, further calls do nothing. A child made before this call
/// counts as a process of its own.
void install();

/// Whether this process is such a child. Locks that the probe's threads held when the host forked
/// are held for ever in it, so nothing of theirs may be touched.
bool isInChild();

/// The descriptor is closed in children, so that neither a port nor a peer waits for a process that
/// will never answer.
void closeInChild(int descriptor);

/// Called before the descriptor is closed here.
void forget(int descriptor);

}  // namespace tarnix::linux_platform::fork_guard
