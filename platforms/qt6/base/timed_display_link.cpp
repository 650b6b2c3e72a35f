#include "platforms/qt6/base/timed_display_link.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QSocketNotifier>
#include <cstdint>
#include <utility>

namespace tarnix::qt6 {

namespace {

timespec toTimespec(Seconds duration) {
  const auto whole = std::chrono::duration_cast<std::chrono::nanoseconds>(duration).count();
  return {.tv_sec = whole / 1'000'000'000, .tv_nsec = whole % 1'000'000'000};
}

}  // namespace

TimedDisplayLink::TimedDisplayLink(platform::Display::Tick tick)
    : tick_(std::make_shared<platform::Display::Tick>(std::move(tick))),
      timer_(::timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)) {
  TimedDisplayLink::resume();
}

TimedDisplayLink::~TimedDisplayLink() {
  TimedDisplayLink::suspend();
  ::close(timer_);
}

void TimedDisplayLink::resume() {
  if (notifier_ != nullptr || timer_ < 0 || QCoreApplication::instance() == nullptr) {
    return;
  }
  notifier_ = new QSocketNotifier(timer_, QSocketNotifier::Read);
  QObject::connect(notifier_, &QSocketNotifier::activated, notifier_, [this] { showFrames(); });
  run();
}

void TimedDisplayLink::suspend() {
  if (QSocketNotifier* const notifier = std::exchange(notifier_, nullptr)) {
    notifier->setEnabled(false);
    notifier->disconnect();
    // This may be its own tick.
    notifier->deleteLater();
  }
}

void TimedDisplayLink::run() {
  rate_ = displayRefreshRate();
  lastFrame_ = frameClock();
  const timespec period = toTimespec(Seconds(1 / rate_));
  const itimerspec schedule{.it_interval = period, .it_value = period};
  ::timerfd_settime(timer_, 0, &schedule, nullptr);
}

void TimedDisplayLink::showFrames() {
  std::uint64_t frames = 0;
  if (::read(timer_, &frames, sizeof frames) != sizeof frames) {
    return;
  }
  // The loop was busy while all but the last of them passed.
  lastFrame_ += Seconds(static_cast<double>(frames) / rate_);
  const Seconds timestamp = lastFrame_;
  if (displayRefreshRate() != rate_) {
    run();
  }
  const std::shared_ptr<platform::Display::Tick> tick = tick_;
  (*tick)(timestamp);
}

}  // namespace tarnix::qt6
