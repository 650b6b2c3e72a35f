#pragma once

#include <string>

#include "probe/platform/device.h"

namespace tarnix::fakes {

class FakeDevice : public platform::Device {
 public:
  std::string name() const override { return deviceName; }

  std::string deviceName = "Testbench";
};

}  // namespace tarnix::fakes
