#pragma once

#include <cstdint>
#include <memory>

#include "probe/platform/listener.h"

namespace tarnix::linux_platform {

/// Keeps a service announced by DNS service discovery, on the loopback interface only, for as long
/// as it lives. All work is done on a thread of its own, by a module that is loaded for it: the
/// libraries behind it may wait for a message bus that does not answer. When the service cannot be
/// announced, one line on standard error says why. Any thread.
class ServiceAdvertisement {
 public:
  static std::unique_ptr<ServiceAdvertisement> start(const platform::Service& service,
                                                     std::uint16_t port);

  virtual ~ServiceAdvertisement() = default;
};

}  // namespace tarnix::linux_platform
