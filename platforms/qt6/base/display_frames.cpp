#include "platforms/qt6/base/display_frames.h"

#include <QGuiApplication>
#include <QScreen>
#include <cmath>
#include <ctime>

namespace tarnix::qt6 {

Seconds frameClock() {
  timespec time{};
  ::clock_gettime(CLOCK_MONOTONIC, &time);
  return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

double displayRefreshRate() {
  constexpr double usualRefreshRate = 60;
  const QScreen* const screen = QGuiApplication::primaryScreen();
  const double rate = screen == nullptr ? 0 : screen->refreshRate();
  // Some screens do not know theirs.
  return rate >= 1 && std::isfinite(rate) ? rate : usualRefreshRate;
}

}  // namespace tarnix::qt6
