#pragma once

#include <chrono>
#include <string>

namespace tarnix {

/// Internet date and time in UTC, whole seconds: "2026-03-01T09:30:00Z".
std::string iso8601(std::chrono::system_clock::time_point time);

}  // namespace tarnix
