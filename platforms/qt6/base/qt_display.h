#pragma once

#include "probe/platform/display.h"

namespace tarnix::qt6 {

/// Display links on the toolkit's event loop. They do not take part in the host's rendering: what
/// they go by is the screen's refresh rate and a clock of the system's.
class QtDisplay : public platform::Display {
 public:
  static QtDisplay& shared();

  /// The application object is there, or about to go: links rest without one. Main thread.
  void start();
  void stop();

  std::unique_ptr<platform::DisplayLink> displayLink(Tick tick,
                                                     platform::TickDelivery delivery) override;

 private:
  QtDisplay() = default;
};

}  // namespace tarnix::qt6
