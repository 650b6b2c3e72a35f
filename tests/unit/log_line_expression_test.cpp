// Compares what is matched by hand with ICU's own expressions, on generated lines and for every
// character there is.
#include <gtest/gtest.h>
#include <unicode/locid.h>
#include <unicode/regex.h>
#include <unicode/unistr.h>

#include <array>
#include <cstdint>
#include <memory>
#include <random>
#include <string>

#include "probe/capture/log_line.h"
#include "probe/platform/characters.h"

namespace tarnix::tests {
namespace {

class Expression {
 public:
  explicit Expression(const char* pattern) {
    UErrorCode status = U_ZERO_ERROR;
    matcher_ =
        std::make_unique<icu::RegexMatcher>(icu::UnicodeString::fromUTF8(pattern), 0, status);
    EXPECT_TRUE(U_SUCCESS(status));
  }

  bool find(const icu::UnicodeString& text) {
    matcher_->reset(text);
    return matcher_->find() != 0;
  }

  std::string group(int index) const {
    UErrorCode status = U_ZERO_ERROR;
    std::string text;
    matcher_->group(index, status).toUTF8String(text);
    return text;
  }

 private:
  std::unique_ptr<icu::RegexMatcher> matcher_;
};

std::string levelOf(const std::string& word) {
  std::string upper;
  icu::UnicodeString::fromUTF8(word).toUpper(icu::Locale::getRoot()).toUTF8String(upper);
  if (upper == "INFO" || upper == "NOTICE") {
    return "INFO";
  }
  if (upper == "WARN" || upper == "WARNING") {
    return "WARN";
  }
  const bool isError =
      upper == "ERROR" || upper == "ERR" || upper == "CRITICAL" || upper == "FAULT";
  return isError ? "ERROR" : "DEBUG";
}

struct Parsed {
  std::string level;
  std::string category;
  std::string message;

  bool operator==(const Parsed&) const = default;
};

class ByExpressions {
 public:
  Parsed parse(const std::string& line) {
    const icu::UnicodeString text = icu::UnicodeString::fromUTF8(line);
    if (withCategory_.find(text)) {
      return {levelOf(withCategory_.group(1)), withCategory_.group(2), withCategory_.group(3)};
    }
    if (withLevel_.find(text)) {
      return {levelOf(withLevel_.group(1)), "app", withLevel_.group(2)};
    }
    return {"DEBUG", "app", line};
  }

 private:
  Expression withCategory_{R"(\[(\w+)\]\s*([\w.]+):\s*(.*))"};
  Expression withLevel_{R"(\[(\w+)\]\s*(.*))"};
};

Parsed byHand(const std::string& line) {
  const LogLine parsed = LogLine::parse(line);
  return {std::string(parsed.level), std::string(parsed.category), std::string(parsed.message)};
}

/// Lines of the pieces that the expressions tell apart, so that nearly every line takes some way
/// through them that others do not.
class LineGenerator {
 public:
  std::string next() {
    std::string line;
    for (std::size_t count = generator_() % 14; count > 0; --count) {
      line += pieces[generator_() % pieces.size()];
    }
    return line;
  }

 private:
  static constexpr auto pieces = std::to_array<const char*>(
      {"[",      "[",      "[",      "]",          "]",        "]",      "[info]",    "[Err]",
       "[warn]", "[x]",    "[info]", "[Warning] ", "[err] b:", "c:",     "漢.ß:",     ":",
       ":",      ".",      " ",      " ",          "a",        "b.c",    "Net.HTTP:", "info",
       "fault",  "_",      "7",      "-",          "/",        "(",      "\t",        "\v",
       "\f",     "\r",     "\x1c",   "\x01",       "\x7f",     "ß",      "é",         "e\u0301",
       "ı",      "ſ",      "K",      "ﬁ",          "Ω",        "漢",     "ا",         "१",
       "²",      "Ⅷ",      "\u00A0", "\u1680",     "\u180E",   "\u2003", "\u200B",    "\u200C",
       "\u200D", "\u2028", "\u2029", "\u0085",     "\u3000",   "😀",      "𝒳"});
  std::mt19937 generator_{20'240'607};
};

TEST(LogLineAgainstExpressions, AgreesOnGeneratedLines) {
  ByExpressions expressions;
  LineGenerator generator;
  int withCategory = 0;
  for (int count = 0; count < 300'000; ++count) {
    const std::string line = generator.next();
    const Parsed expected = expressions.parse(line);
    ASSERT_EQ(byHand(line), expected) << '"' << line << '"';
    withCategory += expected.category != "app" ? 1 : 0;
  }
  EXPECT_GT(withCategory, 10'000) << "the lines no longer reach the first expression";
}

TEST(LogLineAgainstExpressions, AgreesOnTheClassOfEveryCharacter) {
  Expression word(R"(\A\w\z)");
  Expression space(R"(\A\s\z)");
  ByExpressions expressions;
  for (char32_t character = 0; character < 0x110000; ++character) {
    const auto codePoint = static_cast<UChar32>(character);
    if (U_IS_SURROGATE(character)) {
      continue;
    }
    const icu::UnicodeString text(codePoint);
    ASSERT_EQ(platform::isWordCharacter(character), word.find(text)) << std::hex << codePoint;
    ASSERT_EQ(platform::isWhiteSpace(character), space.find(text)) << std::hex << codePoint;
    if (character == '\n') {
      continue;
    }
    std::string bytes;
    text.toUTF8String(bytes);
    const std::string line = "[" + bytes + "]" + bytes + "a" + bytes + ":" + bytes + "b" + bytes;
    ASSERT_EQ(byHand(line), expressions.parse(line)) << std::hex << codePoint;
    const std::string plain = "[a]a:" + bytes + "b" + bytes;
    ASSERT_EQ(byHand(plain), expressions.parse(plain)) << std::hex << codePoint;
  }
}

TEST(LogLineAgainstExpressions, AgreesOnTheLevelOfEveryCharacterInAWord) {
  for (char32_t character = 1; character < 0x110000; ++character) {
    const auto codePoint = static_cast<UChar32>(character);
    if (U_IS_SURROGATE(character) || !platform::isWordCharacter(character)) {
      continue;
    }
    std::string bytes;
    icu::UnicodeString(codePoint).toUTF8String(bytes);
    for (const std::string& word :
         {bytes + "nfo", "not" + bytes + "ce", "err" + bytes, "warn" + bytes, bytes + "arn",
          "f" + bytes + "ult", "cr" + bytes + "tical"}) {
      ASSERT_EQ(normalizeLevel(word), levelOf(word)) << word;
    }
  }
}

}  // namespace
}  // namespace tarnix::tests
