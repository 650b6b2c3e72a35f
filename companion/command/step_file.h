#pragma once

#include <string>
#include <variant>
#include <vector>

#include "companion/command/step.h"

namespace tarnix::companion {

/// Reads steps from YAML: a list, each entry one step.
///
///     - tap: New              # a label,
///     - tap: [297, 300]       # or a point
///     - swipe: [200, 600, 200, 300]
///     - type: héllo
///     - wait: {text: Ready, within: 5}    # also gone: and screen:
///     - pause: 0.5            # seconds
///
/// Otherwise, for people, what is wrong and where.
std::variant<std::vector<Step>, std::string> stepsIn(const std::string& yaml);

}  // namespace tarnix::companion
