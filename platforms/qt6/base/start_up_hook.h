#pragma once

#include <functional>

/// The moments at which the host's application object comes and goes.
namespace tarnix::qt6::start_up_hook {

/// Runs `onStart` on the main thread each time an application object is made (some hosts make a
/// small one first to read their arguments), at once when there is one; and `onStop` on the same
/// thread when it begins to go, while timers can still be ended. Once a process.
void install(std::function<void()> onStart, std::function<void()> onStop);

}  // namespace tarnix::qt6::start_up_hook
