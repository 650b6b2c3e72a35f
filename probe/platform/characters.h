#pragma once

/// Classes of Unicode characters, as ICU's regular expressions draw them. Any thread.
namespace tarnix::platform {

/// What `\w` stands for: letters, marks, decimal digits, connecting punctuation and joiners.
bool isWordCharacter(char32_t character);

/// What `\s` stands for.
bool isWhiteSpace(char32_t character);

}  // namespace tarnix::platform
