#pragma once

#include <string>
#include <tuple>
#include <vector>

#include "probe/link/record.h"

namespace tarnix {

/// What a host that crashed leaves behind.
struct CrashReport {
  /// "NSException" or "Signal".
  std::string type;
  /// The exception's type, or the signal's name.
  std::string name;
  std::string reason;
  /// Innermost call first.
  std::vector<std::string> stack;
  /// The screen that was on view.
  std::string screen;
  /// Method, address and status of the newest HTTP exchange, or "none".
  std::string lastRequest;
  std::string bundleId;
  /// ISO 8601, in UTC.
  std::string timestamp;

  bool operator==(const CrashReport&) const = default;

  static constexpr auto fields() {
    return std::tuple{
        Field{"type", &CrashReport::type},         Field{"name", &CrashReport::name},
        Field{"reason", &CrashReport::reason},     Field{"stack", &CrashReport::stack},
        Field{"screen", &CrashReport::screen},     Field{"lastRequest", &CrashReport::lastRequest},
        Field{"bundleId", &CrashReport::bundleId}, Field{"timestamp", &CrashReport::timestamp}};
  }
};

}  // namespace tarnix
