#include "companion/output/display_text.h"

#include <gtest/gtest.h>

namespace tarnix::companion {
namespace {

TEST(Printable, MakesControlsVisibleAndLeavesTextAlone) {
  struct Case {
    std::string_view given;
    std::string_view shown;
  };
  using namespace std::string_view_literals;
  const Case cases[] = {
      {"plain"sv, "plain"sv},
      {"Größe 名前 👩‍👩‍👧 é"sv, "Größe 名前 👩‍👩‍👧 é"sv},
      {"a\nb\tc\rd"sv, "a\\nb\\tc\\rd"sv},
      {"\x1b[31mred\x1b[0m"sv, "\\x1B[31mred\\x1B[0m"sv},
      {"nul\0end\x7f"sv, "nul\\x00end\\x7F"sv},
      // A terminal reads U+009B as the start of a control sequence.
      {"\xc2\x9b"
       "31m"sv,
       "\\u009B31m"sv},
      {"right\u202Eto left"sv, "right\\u202Eto left"sv},
      {"line\u2028end"sv, "line\\u2028end"sv},
      {"bad \xff\xc3( end\xe2\x82"sv, "bad \\xFF\\xC3( end\\xE2\\x82"sv},
  };
  for (const Case& test : cases) {
    EXPECT_EQ(printable(test.given), test.shown);
  }
}

TEST(Printable, KeepsLineFeedsWhereAsked) {
  EXPECT_EQ(printable("a\n\x1b", KeptControls::lineFeeds), "a\n\\x1B");
}

TEST(PrintableJson, WritesTerminalControlsAsEscapes) {
  EXPECT_EQ(printableJson("{\"a\":\"\xc2\x9b\x7f\u202E \\n 名\"}"),
            "{\"a\":\"\\u009b\\u007f\\u202e \\n 名\"}");
}

TEST(DisplayWidth, CountsColumns) {
  struct Case {
    std::string_view text;
    std::size_t width;
  };
  const Case cases[] = {
      {"", 0},   {"abc", 3},    {"é", 1},  {"e\u0301", 1}, {"名前", 4}, {"👩‍👩‍👧", 2},
      {"🇩🇪", 2}, {"❤️", 2}, {"ｆ", 2}, {"नि", 1}};
  for (const Case& test : cases) {
    EXPECT_EQ(displayWidth(test.text), test.width) << test.text;
  }
}

TEST(CutToWidth, CutsBetweenCharactersAndMarksIt) {
  struct Case {
    std::string_view text;
    std::size_t width;
    std::string_view cut;
  };
  const Case cases[] = {
      {"abcdef", 6, "abcdef"},
      {"abcdef", 5, "abcd…"},
      {"abcdef", 1, "…"},
      {"abcdef", 0, ""},
      {"名前名前", 8, "名前名前"},
      {"名前名前", 7, "名前名…"},
      {"名前名前", 6, "名前…"},
      {"a👩‍👩‍👧b👩‍👩‍👧", 5, "a👩‍👩‍👧b…"},
  };
  for (const Case& test : cases) {
    EXPECT_EQ(cutToWidth(test.text, test.width), test.cut) << test.text << " to " << test.width;
  }
}

}  // namespace
}  // namespace tarnix::companion
