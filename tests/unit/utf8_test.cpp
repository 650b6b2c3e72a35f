#include "probe/model/utf8.h"

#include <gtest/gtest.h>

#include <string>

namespace tarnix::tests {
namespace {

TEST(Utf8, TellsWellFormedText) {
  const std::pair<std::string, bool> cases[] = {
      {"", true},
      {"plain", true},
      {std::string("a\0b", 3), true},
      {"größe 漢 😀", true},
      {"\xED\x9F\xBF \xEE\x80\x80 \xF4\x8F\xBF\xBF", true},
      {"12345678\xC3\xA4", true},
      {"\x80", false},
      {"12345678\xC3", false},
      {"\xC0\xAF", false},
      {"\xC1\x80", false},
      {"\xE0\x9F\xBF", false},
      {"\xED\xA0\x80", false},
      {"\xE2\x82", false},
      {"\xE2\x28\xA1", false},
      {"\xF0\x8F\xBF\xBF", false},
      {"\xF4\x90\x80\x80", false},
      {"\xF5\x80\x80\x80", false},
      {"\xF0\x9F\x98 ", false},
      {"\xFF", false},
  };
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(utf8::isWellFormed(text), expected) << testing::PrintToString(text);
  }
}

TEST(Utf8, MeasuresTheSequenceAtAPosition) {
  const std::string text = "a\u00FC\u6F22\U0001F600\xC3";
  EXPECT_EQ(utf8::sequenceLength(text, 0), 1U);
  EXPECT_EQ(utf8::sequenceLength(text, 1), 2U);
  EXPECT_EQ(utf8::sequenceLength(text, 3), 3U);
  EXPECT_EQ(utf8::sequenceLength(text, 6), 4U);
  EXPECT_EQ(utf8::sequenceLength(text, 2), 0U);
  EXPECT_EQ(utf8::sequenceLength(text, 10), 0U);
}

TEST(Utf8, MakesTextWellFormed) {
  EXPECT_EQ(utf8::wellFormed("plain größe"), "plain größe");
  EXPECT_EQ(utf8::wellFormed("caf\xE9"), "caf\uFFFD");
  EXPECT_EQ(utf8::wellFormed("\xF0\x9F x"), "\uFFFD\uFFFD x");
}

TEST(Utf8, ReadsEveryCharacter) {
  const std::string text = "aé漢😀";
  std::size_t position = 0;
  std::u32string characters;
  while (position < text.size()) {
    characters += utf8::next(text, position);
  }
  EXPECT_EQ(characters, U"aé漢😀");
}

}  // namespace
}  // namespace tarnix::tests
