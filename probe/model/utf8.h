#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// UTF-8 as the Unicode Standard defines it: no overlong forms, no surrogates, nothing above
/// U+10FFFF. Any thread.
namespace tarnix::utf8 {

/// The length in bytes of the well-formed sequence at `position`, which lies inside of `text`; 0
/// when there is none.
std::size_t sequenceLength(std::string_view text, std::size_t position);

bool isWellFormed(std::string_view text);

/// `text` with U+FFFD for each byte that is not part of a well-formed sequence.
std::string wellFormed(std::string_view text);

/// The character at `position` of well-formed text; moves `position` behind it.
char32_t next(std::string_view text, std::size_t& position);

}  // namespace tarnix::utf8
