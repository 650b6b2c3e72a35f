#pragma once

#include <memory>

#include "probe/platform/window.h"

namespace tarnix {

/// The host's key window, whatever its class; null when there is none. What the probe draws is
/// never key. Main thread.
std::shared_ptr<platform::Window> keyWindow();

}  // namespace tarnix
