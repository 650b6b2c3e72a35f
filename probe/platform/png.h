#pragma once

#include <string>

#include "probe/platform/picture.h"

namespace tarnix::platform {

/// The bytes of a PNG file of exactly these pixels; empty when there is none to be had. Any thread.
std::string pngOf(const Picture& picture);

}  // namespace tarnix::platform
