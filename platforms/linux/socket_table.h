#pragma once

#include <istream>
#include <optional>

#include "platforms/linux/tcp_endpoints.h"

namespace tarnix::linux_platform {

/// Looks the owner of one socket up in /proc/net/tcp and /proc/net/tcp6: slow where there are many
/// sockets, but to be had wherever /proc is. Nothing when there is no such socket.
std::optional<SocketOwner> searchSocketTable(const TcpEndpoints& endpoints);

/// The same in a table of that form.
std::optional<SocketOwner> searchSocketTable(std::istream& table, const TcpEndpoints& endpoints);

}  // namespace tarnix::linux_platform
