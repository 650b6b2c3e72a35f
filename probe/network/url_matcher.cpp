#include "probe/network/url_matcher.h"

#include "probe/platform/text.h"

namespace tarnix {

UrlMatcher::UrlMatcher(const std::string& urlPattern, std::string_view matchMode,
                       const std::optional<std::string>& httpMethod)
    : mode_(modeFrom(matchMode)),
      urlPattern_(urlPattern),
      httpMethod_(platform::uppercased(httpMethod.value_or(""))),
      expression_(mode_ == Mode::regex ? platform::compileRegularExpression(urlPattern) : nullptr) {
}

UrlMatcher::Mode UrlMatcher::modeFrom(std::string_view matchMode) {
  if (matchMode == "prefix") {
    return Mode::prefix;
  }
  return matchMode == "regex" ? Mode::regex : Mode::contains;
}

bool UrlMatcher::matches(std::string_view url, std::string_view method) const {
  if (!httpMethod_.empty() && httpMethod_ != method) {
    return false;
  }
  switch (mode_) {
    case Mode::prefix:
      return url.starts_with(urlPattern_);
    case Mode::regex:
      return expression_ != nullptr && expression_->hasMatch(url);
    case Mode::contains:
      break;
  }
  return url.find(urlPattern_) != std::string_view::npos;
}

}  // namespace tarnix
