#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace tarnix::platform {

/// Runs until it is destroyed, also from inside its own tick.
class DisplayLink {
 public:
  virtual ~DisplayLink() = default;
};

enum class TickDelivery {
  /// With the frame.
  AtOnce,
  /// Those of the frames that passed while the main loop rested come one after the other as soon as
  /// it runs again, before anything that it runs for. Never wakes a loop that rests, where the
  /// platform can do without.
  Deferred,
};

/// The screen that the host's windows are on. Main thread.
class Display {
 public:
  /// `timestamp` is the time at which the screen was to show the frame, from any fixed start; never
  /// negative.
  using Tick = std::function<void(std::chrono::duration<double> timestamp)>;

  virtual ~Display() = default;

  /// Ticks on the main loop once a frame, at the screen's refresh rate, whether the host draws or
  /// not. Frames that the loop is too busy for are left out. Ticks neither throw nor run
  /// the loop.
  virtual std::unique_ptr<DisplayLink> displayLink(Tick tick, TickDelivery delivery) = 0;
};

}  // namespace tarnix::platform
