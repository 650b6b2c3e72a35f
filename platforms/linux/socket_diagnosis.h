#pragma once

#include <optional>

#include "platforms/linux/tcp_endpoints.h"

namespace tarnix::linux_platform {

/// Asks the kernel's socket diagnosis interface (netlink) for the owner of one socket, without
/// waiting. Nothing when there is no such socket or no such interface.
std::optional<SocketOwner> askSocketDiagnosis(const TcpEndpoints& endpoints);

}  // namespace tarnix::linux_platform
