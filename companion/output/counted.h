#pragma once

#include <fmt/format.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace tarnix::companion {

/// "1 view", "2 views". `noun` is one whose plural takes an s.
inline std::string counted(std::size_t count, std::string_view noun) {
  return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

}  // namespace tarnix::companion
