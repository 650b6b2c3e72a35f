#pragma once

#include <optional>
#include <string>

namespace tarnix::platform {

/// A mangled class name as a person writes it, through the demangler ("swift_demangle") of the
/// language runtime that is part of the process; nothing where there is none, or where it does not
/// know the name. Any thread.
std::optional<std::string> demangled(const std::string& mangledName);

}  // namespace tarnix::platform
