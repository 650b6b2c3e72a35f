#pragma once

#include <memory>
#include <string_view>

namespace tarnix::platform {

/// A compiled regular expression in ICU's syntax, without options: upper and lower case are told
/// apart, and a dot is no line end. Any thread, also several at once.
class RegularExpression {
 public:
  virtual ~RegularExpression() = default;

  /// Whether a match lies anywhere in `text`, which is UTF-8. Work is bounded: an expression that
  /// backtracks beyond all measure does not match.
  virtual bool hasMatch(std::string_view text) const = 0;
};

/// Null when `pattern`, in UTF-8, is no expression; the empty pattern is none.
std::unique_ptr<const RegularExpression> compileRegularExpression(std::string_view pattern);

}  // namespace tarnix::platform
