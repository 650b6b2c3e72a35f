#pragma once

#include <chrono>

namespace tarnix::qt6 {

using Seconds = std::chrono::duration<double>;

/// Time on the clock that frames are counted on, which stands still while the machine sleeps.
Seconds frameClock();

/// Frames a second of the screen that the application's windows open on. Main thread.
double displayRefreshRate();

}  // namespace tarnix::qt6
