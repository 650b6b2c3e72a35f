#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tarnix {

/// Standard Base64 (RFC 4648 section 4): with padding, without line breaks.
std::string encodeBase64(std::string_view bytes);

/// The same, behind what `text` holds already.
void appendBase64(std::string_view bytes, std::string& text);

/// Characters that so many bytes come to.
constexpr std::size_t base64Size(std::size_t byteCount) { return (byteCount + 2) / 3 * 4; }

/// Nothing when `text` is not exactly that form: another alphabet, white space, missing or
/// misplaced padding. Set bits under the padding are accepted, as RFC 4648 section 3.5 allows.
std::optional<std::string> decodeBase64(std::string_view text);

}  // namespace tarnix
