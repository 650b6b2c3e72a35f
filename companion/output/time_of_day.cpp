#include "companion/output/time_of_day.h"

#include <fmt/format.h>

#include <chrono>
#include <ctime>

namespace tarnix::companion {

std::string timeOfDay(Timestamp timestamp) {
  const auto time = timestamp.toTimePoint();
  const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
  std::tm local{};
  localtime_r(&seconds, &local);
  const auto fraction = std::chrono::floor<std::chrono::milliseconds>(
      time - std::chrono::floor<std::chrono::seconds>(time));
  return fmt::format("{:02}:{:02}:{:02}.{:03}", local.tm_hour, local.tm_min, local.tm_sec,
                     fraction.count());
}

}  // namespace tarnix::companion
