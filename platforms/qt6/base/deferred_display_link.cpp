#include "platforms/qt6/base/deferred_display_link.h"

#include <utility>

namespace tarnix::qt6 {

DeferredDisplayLink::DeferredDisplayLink(platform::Display::Tick tick)
    : tick_(std::make_shared<platform::Display::Tick>(std::move(tick))),
      watch_(*this),
      timed_(std::make_unique<TimedDisplayLink>([this](Seconds timestamp) {
        if (watch_.isWatching()) {
          resume();
          timed_.reset();
          return;
        }
        const std::shared_ptr<platform::Display::Tick> held = tick_;
        (*held)(timestamp);
      })) {}

void DeferredDisplayLink::resume() {
  period_ = Seconds(1 / displayRefreshRate());
  nextFrame_ = frameClock() + period_;
}

void DeferredDisplayLink::suspend() {}

void DeferredDisplayLink::loopWillRest() {
  const std::int64_t frames = takeFrames();
  if (frames > 0) {
    // The loop was busy while all but the last of them passed.
    showFrames(1);
  }
}

void DeferredDisplayLink::loopHasRested() { showFrames(takeFrames()); }

std::int64_t DeferredDisplayLink::takeFrames() {
  const Seconds now = frameClock();
  if (timed_ != nullptr || now < nextFrame_) {
    return 0;
  }
  const std::int64_t frames = static_cast<std::int64_t>((now - nextFrame_) / period_) + 1;
  nextFrame_ += static_cast<double>(frames) * period_;
  return frames;
}

void DeferredDisplayLink::showFrames(std::int64_t count) {
  if (count == 0) {
    return;
  }
  const std::shared_ptr<platform::Display::Tick> tick = tick_;
  const Seconds period = period_;
  const Seconds end = nextFrame_;
  period_ = Seconds(1 / displayRefreshRate());
  for (; count > 0 && tick.use_count() > 1; --count) {
    // It may be the last thing that this object does.
    (*tick)(end - static_cast<double>(count) * period);
  }
}

}  // namespace tarnix::qt6
