#pragma once

#include <memory>
#include <string>

#include "platforms/linux/descriptor.h"
#include "probe/platform/connection.h"

namespace tarnix::linux_platform {

class ServerThread;

/// Serves an accepted TCP connection on the server thread. Nothing when the system does not let it.
std::shared_ptr<platform::Connection> makeTcpConnection(ServerThread& thread, Descriptor socket);

}  // namespace tarnix::linux_platform
