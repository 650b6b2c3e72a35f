#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace tarnix::fuzz {

/// Ends the process, which is how the fuzzer learns of it, when what always holds does not.
inline void demand(bool condition) {
  if (!condition) {
    std::abort();
  }
}

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
  // The bytes are the fuzzer's; reading them as characters is what the parsers do.
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace tarnix::fuzz
