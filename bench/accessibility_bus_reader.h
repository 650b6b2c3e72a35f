#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace tarnix::bench {

/// Reads a running application the way every desktop tool does today: node by node over the
/// desktop's accessibility bus, taking of each what our HTML has (name, role, frame, state).
class AccessibilityBusReader {
 public:
  AccessibilityBusReader();

  /// Waits, at most `seconds`, for an application of that name that shows at least one window.
  bool waitForApplication(const std::string& name, int seconds);

  /// Reads all of that application; the number of its nodes that have a name.
  std::size_t readNamedNodes() const;

 private:
  std::optional<int> findApplication(const std::string& name) const;

  int index_ = -1;
};

}  // namespace tarnix::bench
