#pragma once

#include <string>

namespace tarnix::platform {

/// The machine that the host runs on. Any thread.
class Device {
 public:
  virtual ~Device() = default;

  /// The name that people gave it; never empty.
  virtual std::string name() const = 0;
};

}  // namespace tarnix::platform
