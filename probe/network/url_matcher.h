#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "probe/platform/regular_expression.h"

namespace tarnix {

/// The test that a rule puts a request to, made ready once. Any thread.
class UrlMatcher {
 public:
  /// `matchMode` is "prefix" or "regex"; any other text asks for a substring, and so does a mode
  /// that somebody misspelt. An absent or empty `httpMethod` takes every method. A pattern that is
  /// no regular expression matches nothing.
  UrlMatcher(const std::string& urlPattern, std::string_view matchMode,
             const std::optional<std::string>& httpMethod);

  /// `method` is in upper case.
  bool matches(std::string_view url, std::string_view method) const;

 private:
  enum class Mode { prefix, regex, contains };

  static Mode modeFrom(std::string_view matchMode);

  Mode mode_;
  std::string urlPattern_;
  /// In upper case; empty: any.
  std::string httpMethod_;
  /// Null in the other modes and for what is no expression.
  std::unique_ptr<const platform::RegularExpression> expression_;
};

}  // namespace tarnix
