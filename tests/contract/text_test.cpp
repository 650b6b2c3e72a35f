#include "probe/platform/text.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace tarnix::platform {
namespace {

/// One character each, as people see it.
constexpr std::string_view flagOfGermany = "\U0001F1E9\U0001F1EA";
constexpr std::string_view flagOfFrance = "\U0001F1EB\U0001F1F7";
constexpr std::string_view family = "\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466";
constexpr std::string_view composedE = "e\u0301";
constexpr std::string_view hangul = "\u1112\u1161\u11AB";
constexpr std::string_view thumbsUp = "\U0001F44D\U0001F3FD";

struct CharacterCase {
  const char* name;
  std::vector<std::string_view> characters;
};

class CharacterTest : public testing::TestWithParam<CharacterCase> {};

INSTANTIATE_TEST_SUITE_P(
    Texts, CharacterTest,
    testing::Values(CharacterCase{"nothing", {}}, CharacterCase{"ascii", {"a", "b", "c"}},
                    CharacterCase{"lineEnds", {"a", "\r\n", "b", "\n", "\r", "c"}},
                    CharacterCase{"lineEndBeforeOtherText", {"a", "\r\n", "\u00E4"}},
                    CharacterCase{"markOnAscii", {"x", composedE, "y"}},
                    CharacterCase{"markAtTheStart", {"\u0301", "a"}},
                    CharacterCase{"markOnTheLastAscii", {"a", "b", composedE}},
                    CharacterCase{"flags", {flagOfGermany, flagOfFrance, "a"}},
                    CharacterCase{"flagsAfterText", {"a", flagOfGermany, flagOfFrance}},
                    CharacterCase{"joinedEmoji", {"a", family, thumbsUp, "b"}},
                    CharacterCase{"hangulParts", {hangul, hangul}},
                    CharacterCase{"arabic", {"\u0633", "\u0644", "\u0627", "\u0645"}},
                    CharacterCase{"notUtf8", {"a", "\xFF", "\xFE", "b"}},
                    CharacterCase{"cutSequence", {"a", "\xE2\x82"}}),
    [](const auto& information) { return std::string(information.param.name); });

TEST_P(CharacterTest, CutsBetweenCharactersOnly) {
  std::string text;
  for (const std::string_view character : GetParam().characters) {
    text += character;
  }
  std::size_t length = 0;
  const std::size_t count = GetParam().characters.size();
  for (std::size_t index = 0; index < count; ++index) {
    EXPECT_EQ(firstCharacters(text, index), std::string_view(text).substr(0, length)) << index;
    EXPECT_TRUE(hasMoreCharacters(text, index)) << index;
    length += GetParam().characters[index].size();
  }
  EXPECT_EQ(characterCount(text), count);
  EXPECT_EQ(firstCharacters(text, count), text);
  EXPECT_EQ(firstCharacters(text, count + 1), text);
  EXPECT_FALSE(hasMoreCharacters(text, count));
  EXPECT_FALSE(hasMoreCharacters(text, count + 1));
}

TEST(TextTest, LooksNoFurtherThanItMust) {
  // A text of 256 MiB, looked at as a whole a few thousand times, would not end within the bound.
  const std::string text(268'435'456, 'x');
  for (int turn = 0; turn < 10'000; ++turn) {
    ASSERT_TRUE(hasMoreCharacters(text, 200));
    ASSERT_EQ(firstCharacters(text, 200).size(), 200U);
  }
}

TEST(TextTest, CountsOnManyThreadsAtOnce) {
  std::vector<std::jthread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([] {
      std::string text;
      for (int index = 0; index < 50; ++index) {
        text += family;
      }
      for (int turn = 0; turn < 200; ++turn) {
        EXPECT_EQ(firstCharacters(text, 49).size(), 49 * family.size());
      }
    });
  }
}

struct LowerCase {
  const char* name;
  std::string_view text;
  std::string_view lowercased;
};

class LowerCaseTest : public testing::TestWithParam<LowerCase> {};

INSTANTIATE_TEST_SUITE_P(
    Texts, LowerCaseTest,
    testing::Values(LowerCase{"nothing", "", ""},
                    LowerCase{"ascii", "Ok, I GO [1]", "ok, i go [1]"},
                    LowerCase{"latin", "\u00C4\u00D6\u00DC \u00C9", "\u00E4\u00F6\u00FC \u00E9"},
                    LowerCase{"finalSigma", "\u03A3\u0391\u03A3", "\u03C3\u03B1\u03C2"},
                    LowerCase{"dottedCapitalI", "\u0130", "i\u0307"},
                    LowerCase{"cyrillic", "\u0416\u0423\u041A", "\u0436\u0443\u043A"},
                    LowerCase{"caselessScript", "\u4E2D\u6587", "\u4E2D\u6587"},
                    LowerCase{"growing", "\u0130\u0130\u0130\u0130\u0130\u0130\u0130\u0130",
                              "i\u0307i\u0307i\u0307i\u0307i\u0307i\u0307i\u0307i\u0307"},
                    LowerCase{"notUtf8", "A\xFF\u00C9", "a\uFFFD\u00E9"}),
    [](const auto& information) { return std::string(information.param.name); });

TEST_P(LowerCaseTest, MapsAsUnicodeDoes) {
  EXPECT_EQ(lowercased(GetParam().text), GetParam().lowercased);
}

}  // namespace
}  // namespace tarnix::platform
