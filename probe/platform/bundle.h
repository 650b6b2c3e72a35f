#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarnix::platform {

/// What the host application says of itself. Main thread, and the loading thread before it.
class Bundle {
 public:
  virtual ~Bundle() = default;

  /// Absent when the host has no identity at all.
  virtual std::optional<std::string> bundleIdentifier() const = 0;

  /// One of "CFBundleDisplayName", "CFBundleName", "CFBundleShortVersionString" and
  /// "CFBundleVersion"; absent when the host does not set it, and for any other key.
  virtual std::optional<std::string> infoValue(std::string_view key) const = 0;
};

}  // namespace tarnix::platform
