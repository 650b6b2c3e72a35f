#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tarnix::companion {

/// A probe as DNS service discovery knows it.
struct AnnouncedService {
  /// The device's name, made unique on this machine; in UTF-8.
  std::string name;
  std::uint16_t port = 0;

  bool operator==(const AnnouncedService&) const = default;
};

/// What probes are announced as.
inline constexpr const char* serviceType = "_tarnix._tcp";

/// Probes are announced on no other interface.
inline constexpr const char* loopbackInterface = "lo";

}  // namespace tarnix::companion
