#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Text as people see it. All text is UTF-8; bytes that are not are read as U+FFFD. Any thread.
/// A character is an extended grapheme cluster (Unicode Standard Annex 29).
namespace tarnix::platform {

/// Whether `text` has more than `limit` characters; looks no further than it must.
bool hasMoreCharacters(std::string_view text, std::size_t limit);

/// How many characters `text` has.
std::size_t characterCount(std::string_view text);

/// The first `count` characters of `text`, or all when it has fewer.
std::string_view firstCharacters(std::string_view text, std::size_t count);

/// Full Unicode lower-casing, independent of the locale.
std::string lowercased(std::string_view text);

/// Full Unicode upper-casing, independent of the locale; some characters become several.
std::string uppercased(std::string_view text);

}  // namespace tarnix::platform
