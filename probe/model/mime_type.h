#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarnix {

/// The type that a Content-Type header names, without its parameters; nothing when it names none.
std::optional<std::string> mimeTypeIn(std::string_view contentType);

/// Whether two header names are the same; letters outside ASCII have no place in them.
bool isSameHeaderName(std::string_view left, std::string_view right);

}  // namespace tarnix
