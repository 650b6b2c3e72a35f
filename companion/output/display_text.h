#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Text of a host on its way to a terminal. All of it is UTF-8.
namespace tarnix::companion {

/// What may stay as it is although it controls the terminal.
enum class KeptControls { none, lineFeeds };

/// `text` with everything made visible that would move the cursor, change colours or turn the
/// direction of writing, so that a host cannot draw on the user's terminal: "\n", "\x1B", "\u202E".
/// Bytes that are not UTF-8 become "\xNN".
std::string printable(std::string_view text, KeptControls kept = KeptControls::none);

/// A JSON text in which no character can control a terminal: such characters stand inside strings
/// only, where they can be written as escapes.
std::string printableJson(std::string_view json);

/// How many columns of a terminal printable text takes.
std::size_t displayWidth(std::string_view text);

/// The longest start of `text` that takes at most `width` columns, cut between characters as a
/// person sees them; an ellipsis stands for what is cut off.
std::string cutToWidth(std::string_view text, std::size_t width);

}  // namespace tarnix::companion
