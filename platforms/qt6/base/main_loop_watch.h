#pragma once

#include <memory>

namespace tarnix::qt6 {

/// Tells when the main loop rests and when it works, without waking it. GLib's loop can tell, which
/// the toolkit runs on wherever GLib is there. Main thread.
class MainLoopWatch {
 public:
  class Observer {
   public:
    virtual ~Observer() = default;
    /// Called from inside the loop: neither runs a loop nor throws.
    virtual void loopWillRest() = 0;
    /// Comes before anything that the loop was woken for.
    virtual void loopHasRested() = 0;
  };

  explicit MainLoopWatch(Observer& observer);
  MainLoopWatch(const MainLoopWatch&) = delete;
  MainLoopWatch& operator=(const MainLoopWatch&) = delete;
  ~MainLoopWatch();

  /// False until the loop was seen at rest once, so for good when it is not GLib's.
  bool isWatching() const;

 private:
  struct Source;
  std::unique_ptr<Source> source_;
};

}  // namespace tarnix::qt6
