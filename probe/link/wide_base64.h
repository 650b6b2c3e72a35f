#pragma once

#include <cstddef>
#include <string_view>

namespace tarnix {

/// Encodes the beginning of `bytes` with the wide registers of this processor, and returns how many
/// bytes it has taken: a multiple of 3, and 0 where the processor has none. `out` has room for
/// the whole of the encoded text.
std::size_t encodeWideBase64(std::string_view bytes, char* out);

}  // namespace tarnix
