#pragma once

#include <istream>
#include <string>

#include "probe/platform/device.h"

namespace tarnix::linux_platform {

/// This machine, named as its owner named it, else by its host name.
class LocalDevice final : public platform::Device {
 public:
  static LocalDevice& shared() {
    static LocalDevice& instance = *new LocalDevice;
    return instance;
  }

  std::string name() const override;
};

/// The value of PRETTY_HOSTNAME in a file of the form of /etc/machine-info; empty when there is
/// none or it is no UTF-8.
std::string prettyHostName(std::istream& machineInfo);

}  // namespace tarnix::linux_platform
