#pragma once

#include <QObject>
#include <chrono>
#include <memory>

#include "probe/platform/main_queue.h"

namespace tarnix::qt6 {

/// A repeating timer of the event loop. Main thread. Rests while there is no application object.
class MainLoopTimer : public platform::Timer {
 public:
  MainLoopTimer(std::chrono::milliseconds interval, platform::MainQueue::Closure closure);
  ~MainLoopTimer() override;

  MainLoopTimer(const MainLoopTimer&) = delete;
  MainLoopTimer& operator=(const MainLoopTimer&) = delete;

  static void suspendAll();
  static void resumeAll();

 private:
  class Ticker;

  // Deleted by the loop, not here: the timer may end inside its own tick.
  Ticker* const ticker_;
};

}  // namespace tarnix::qt6
