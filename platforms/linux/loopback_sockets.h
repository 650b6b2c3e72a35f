#pragma once

#include <cstdint>
#include <string>

#include "platforms/linux/descriptor.h"

namespace tarnix::linux_platform {

/// The two loopback addresses, bound to one port and not yet listening. At least one is open unless
/// `error` says why not; a machine may lack either family.
struct LoopbackSockets {
  Descriptor ipv4;
  Descriptor ipv6;
  /// In host byte order.
  std::uint16_t port = 0;
  std::string error;
};

/// On a port of the system's choice.
LoopbackSockets bindLoopback();

}  // namespace tarnix::linux_platform
