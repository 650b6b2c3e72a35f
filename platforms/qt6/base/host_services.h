#pragma once

#include "probe/bootstrap/host_module.h"

namespace tarnix::qt6 {

/// Puts the services of the toolkit in place and follows the application object from now on;
/// `context` may be null in tests. Once a process.
const HostServices& installHostServices(const HostModuleContext* context);

}  // namespace tarnix::qt6
