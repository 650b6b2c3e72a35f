#pragma once

#include <cstdint>
#include <string>

namespace tarnix::platform {

/// Why a load failed.
struct UrlError {
  /// Who counts by `code`.
  std::string domain;
  std::int64_t code = 0;
  /// For people.
  std::string localizedDescription;

  bool operator==(const UrlError&) const = default;
};

}  // namespace tarnix::platform
