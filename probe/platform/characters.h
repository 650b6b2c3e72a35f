#pragma once

/// Classes of Unicode characters. Any thread.
namespace tarnix::platform {

/// What `\w` stands for in ICU's regular expressions: letters, marks, decimal digits, connecting
/// punctuation and joiners.
bool isWordCharacter(char32_t character);

/// What `\s` stands for there.
bool isWhiteSpace(char32_t character);

/// The Unicode properties of these names.
bool isUpperCase(char32_t character);
bool isLowerCase(char32_t character);

}  // namespace tarnix::platform
