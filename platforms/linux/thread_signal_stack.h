#pragma once

/// Stacks for signal handlers of their own, so that a thread whose stack is used up can still be
/// reported. Included by code that links no C++ library.
namespace tarnix::linux_platform {

/// Leaves a thread alone that has one already. Freed when the thread ends.
void giveSignalStackToThisThread();

}  // namespace tarnix::linux_platform
