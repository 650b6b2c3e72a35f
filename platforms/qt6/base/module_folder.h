#pragma once

#include <string>

namespace tarnix::qt6 {

/// The folder that this module and its parts lie in, with a slash at its end.
std::string moduleFolder();

}  // namespace tarnix::qt6
