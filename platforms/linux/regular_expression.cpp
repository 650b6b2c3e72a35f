#include "probe/platform/regular_expression.h"

#include <unicode/uregex.h>
#include <unicode/ustring.h>

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace tarnix::platform {

namespace {

/// What one match may cost, in ICU's own unit of about a millisecond. Matching runs on the host's
/// threads, and a pattern may come from anybody's keyboard.
constexpr std::int32_t timeLimit = 100;

/// What ICU can be given at once: it counts in 32-bit integers.
constexpr std::size_t maximumTextSize = 0x4000'0000;

/// Bytes that are not UTF-8 become U+FFFD.
std::u16string utf16From(std::string_view text) {
  constexpr UChar32 replacementCharacter = 0xFFFD;
  std::u16string result(text.size(), u'\0');
  std::int32_t length = 0;
  UErrorCode error = U_ZERO_ERROR;
  u_strFromUTF8WithSub(result.data(), static_cast<std::int32_t>(result.size()), &length,
                       text.data(), static_cast<std::int32_t>(text.size()), replacementCharacter,
                       nullptr, &error);
  result.resize(U_SUCCESS(error) ? static_cast<std::size_t>(length) : 0);
  return result;
}

struct Close {
  void operator()(URegularExpression* matcher) const { uregex_close(matcher); }
};
using Matcher = std::unique_ptr<URegularExpression, Close>;

/// ICU's expressions remember their text, so that each serves one thread at a time. Their compiled
/// form is shared: a thread that finds none idle makes a copy, which costs little.
class IcuRegularExpression : public RegularExpression {
 public:
  explicit IcuRegularExpression(Matcher compiled) : original_(std::move(compiled)) {}

  bool hasMatch(std::string_view text) const override {
    if (text.size() > maximumTextSize) {
      return false;
    }
    const std::u16string characters = utf16From(text);
    Matcher matcher = takeMatcher();
    UErrorCode error = U_ZERO_ERROR;
    uregex_setText(matcher.get(), characters.data(), static_cast<std::int32_t>(characters.size()),
                   &error);
    const bool isMatch = uregex_find(matcher.get(), 0, &error) != 0 && U_SUCCESS(error);
    giveBack(std::move(matcher));
    return isMatch;
  }

 private:
  /// Null when memory ran out: this text does not match, and the next one gets another try.
  Matcher takeMatcher() const {
    const std::lock_guard guard(mutex_);
    if (!idle_.empty()) {
      Matcher matcher = std::move(idle_.back());
      idle_.pop_back();
      return matcher;
    }
    UErrorCode error = U_ZERO_ERROR;
    Matcher matcher(uregex_clone(original_.get(), &error));
    uregex_setTimeLimit(matcher.get(), timeLimit, &error);
    return matcher;
  }

  void giveBack(Matcher matcher) const {
    if (matcher == nullptr) {
      return;
    }
    const std::lock_guard guard(mutex_);
    idle_.push_back(std::move(matcher));
  }

  const Matcher original_;
  mutable std::mutex mutex_;
  mutable std::vector<Matcher> idle_;
};

}  // namespace

std::unique_ptr<const RegularExpression> compileRegularExpression(std::string_view pattern) {
  if (pattern.size() > maximumTextSize) {
    return nullptr;
  }
  const std::u16string characters = utf16From(pattern);
  UErrorCode error = U_ZERO_ERROR;
  Matcher compiled(uregex_open(characters.data(), static_cast<std::int32_t>(characters.size()), 0,
                               nullptr, &error));
  if (U_FAILURE(error)) {
    return nullptr;
  }
  return std::make_unique<const IcuRegularExpression>(std::move(compiled));
}

}  // namespace tarnix::platform
