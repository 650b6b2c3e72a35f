#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "probe/platform/view_controller.h"

/// The names that screens go by. Main thread.
namespace tarnix {

/// A hosting controller goes by its title, else by the view that it hosts; any other controller by
/// its class, without the ending that says that it is one, in separate words.
std::string humanReadableName(const platform::ViewController& controller);

/// The view in the name of a hosting controller's class: what stands between the first "<" and the
/// last ">", from its last dot on. Of nested arguments that leaves what it leaves.
std::optional<std::string> extractHostedViewName(const std::string& className);

/// The same for a mangled name, but from the last "<" on.
std::optional<std::string> demangleAndExtract(const std::string& mangledName);

}  // namespace tarnix
