#pragma once

#include <string>
#include <string_view>

namespace tarnix::linux_platform {

/// The path of a loadable module of this name that lies beside the file that holds this code.
std::string modulePath(std::string_view name);

}  // namespace tarnix::linux_platform
