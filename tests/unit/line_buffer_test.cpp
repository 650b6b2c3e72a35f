#include "probe/capture/line_buffer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarnix::tests {
namespace {

using Lines = std::vector<std::string>;

Lines take(LineBuffer& buffer, std::string_view piece) {
  const std::vector<std::string_view>& lines = buffer.take(piece);
  return {lines.begin(), lines.end()};
}

TEST(LineBuffer, CutsAtLineFeeds) {
  LineBuffer buffer;
  EXPECT_EQ(take(buffer, "a\n\nb\n"), (Lines{"a", "", "b"}));
}

TEST(LineBuffer, KeepsWhatHasNoLineFeedYet) {
  LineBuffer buffer;
  EXPECT_EQ(take(buffer, "a\nbe"), Lines{"a"});
  EXPECT_EQ(take(buffer, "gi"), Lines{});
  EXPECT_EQ(take(buffer, "n\nc\nd"), (Lines{"begin", "c"}));
  EXPECT_EQ(take(buffer, "\n"), Lines{"d"});
  EXPECT_EQ(take(buffer, "\n"), Lines{""});
}

TEST(LineBuffer, GivesTheSameLinesHoweverTheStreamIsCut) {
  const std::string stream = "first\n\nzw\u00F6lf \U0001F600\nlast\nrest";
  for (std::size_t size = 1; size <= stream.size(); ++size) {
    LineBuffer buffer;
    Lines all;
    for (std::size_t begin = 0; begin < stream.size(); begin += size) {
      for (const std::string& line : take(buffer, std::string_view(stream).substr(begin, size))) {
        all.push_back(line);
      }
    }
    EXPECT_EQ(all, (Lines{"first", "", "zw\u00F6lf \U0001F600", "last"})) << size;
  }
}

TEST(LineBuffer, KeepsNulAndCarriageReturn) {
  LineBuffer buffer;
  EXPECT_EQ(take(buffer, std::string_view("a\0b\r\n", 5)), Lines{std::string("a\0b\r", 4)});
}

TEST(LineBuffer, HoldsALineOfTheBound) {
  LineBuffer buffer;
  const std::string line(LineBuffer::maximumPending, 'x');
  EXPECT_EQ(take(buffer, line), Lines{});
  EXPECT_EQ(take(buffer, "\n"), Lines{line});
}

TEST(LineBuffer, LetsGoOfALongerOneAsAWhole) {
  LineBuffer buffer;
  EXPECT_EQ(take(buffer, "a\n" + std::string(LineBuffer::maximumPending, 'x')), Lines{"a"});
  EXPECT_EQ(take(buffer, "x"), Lines{});
  EXPECT_EQ(take(buffer, "the rest\nb\n"), (Lines{"the rest", "b"}));
}

}  // namespace
}  // namespace tarnix::tests
