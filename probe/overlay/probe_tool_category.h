#pragma once

#include <string_view>

#include "probe/platform/drawing.h"

namespace tarnix {

/// The tools that the companion works with, as people are shown them.
enum class ProbeToolCategory { input, scanning, capture, reading, verifying, environment };

std::string_view label(ProbeToolCategory category);
/// One character.
std::string_view icon(ProbeToolCategory category);
platform::Color color(ProbeToolCategory category);

}  // namespace tarnix
