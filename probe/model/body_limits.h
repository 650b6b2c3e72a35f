#pragma once

#include <cstddef>

namespace tarnix {

/// Of either body, the beginning is kept. Uploads are worth more to whoever looks at them than
/// downloads, which can be had again.
inline constexpr std::size_t requestBodyLimit = 65'536;
inline constexpr std::size_t responseBodyLimit = 4'096;

}  // namespace tarnix
