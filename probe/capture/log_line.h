#pragma once

#include <string_view>

namespace tarnix {

/// What one line of a log says. All three parts lie in the line or in static memory.
///
/// The form of a line is that of two expressions, tried one after the other, each at its first
/// match anywhere in the line; what stands before the match is lost:
///
///     \[(\w+)\]\s*([\w.]+):\s*(.*)     level, category, message
///     \[(\w+)\]\s*(.*)                 level, message; the category is "app"
///
/// A line of neither form is a message of level "DEBUG" and category "app". They are matched by
/// hand, with the results that ICU gives: a host that logs must not pay for an expression engine.
struct LogLine {
  /// One of DEBUG, INFO, WARN, ERROR.
  std::string_view level;
  std::string_view category;
  std::string_view message;

  bool operator==(const LogLine&) const = default;

  /// `line` is well-formed UTF-8, without its line feed. Any thread.
  static LogLine parse(std::string_view line);
};

/// The level that a word in brackets stands for, whatever its case; "DEBUG" for a word that is
/// unknown. Any thread.
std::string_view normalizeLevel(std::string_view word);

}  // namespace tarnix
