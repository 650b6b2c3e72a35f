#include "probe/model/iso8601.h"

#include <cstddef>
#include <cstdio>

namespace tarnix {

std::string iso8601(std::chrono::system_clock::time_point time) {
  const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
  const auto days = std::chrono::floor<std::chrono::days>(seconds);
  const std::chrono::year_month_day day(days);
  const std::chrono::hh_mm_ss timeOfDay(seconds - days);
  std::string text(sizeof "-32768-12-31T23:59:59Z", '\0');
  const int length = std::snprintf(
      text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(day.year()),
      static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()),
      static_cast<int>(timeOfDay.hours().count()), static_cast<int>(timeOfDay.minutes().count()),
      static_cast<int>(timeOfDay.seconds().count()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

}  // namespace tarnix
