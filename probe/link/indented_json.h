#pragma once

#include <string>
#include <string_view>

namespace tarnix {

/// The same JSON text for people: one member or element a line, two blanks a level. `json` has no
/// white space between its tokens.
std::string indentedJson(std::string_view json);

}  // namespace tarnix
