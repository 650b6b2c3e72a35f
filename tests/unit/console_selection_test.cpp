#include "probe/commands/console_selection.h"

#include <gtest/gtest.h>

#include <string>

namespace tarnix::tests {
namespace {

std::vector<ConsoleEntryResponse> entries(int count, int errorEvery = 0) {
  std::vector<ConsoleEntryResponse> result;
  for (int index = 0; index < count; ++index) {
    const bool isError = errorEvery != 0 && index % errorEvery == 0;
    result.push_back({.timestamp = index + 0.5,
                      .level = isError ? "error" : "log",
                      .message = std::to_string(index),
                      .url = std::nullopt});
  }
  return result;
}

TEST(ConsoleSelection, KeepsTheLastFiftyUnlessToldOtherwise) {
  const WebViewConsoleResponse response = consoleSelection(entries(120), {});
  ASSERT_EQ(response.entries.size(), 50U);
  EXPECT_EQ(response.entries.front().message, "70");
  EXPECT_EQ(response.entries.back().message, "119");
  EXPECT_EQ(response.totalCount, 120);
}

TEST(ConsoleSelection, KeepsTheLastOfOneLevel) {
  const WebViewConsoleResponse response =
      consoleSelection(entries(120, 4), {.level = "error", .limit = 10});
  ASSERT_EQ(response.entries.size(), 10U);
  EXPECT_EQ(response.entries.front().message, "80");
  EXPECT_EQ(response.entries.back().message, "116");
  EXPECT_EQ(response.totalCount, 120);
}

TEST(ConsoleSelection, TellsUpperFromLowerCaseInLevels) {
  const WebViewConsoleResponse response =
      consoleSelection(entries(8, 2), {.level = "ERROR", .limit = {}});
  EXPECT_TRUE(response.entries.empty());
  EXPECT_EQ(response.totalCount, 8);
}

TEST(ConsoleSelection, KeepsAllWhenThereAreFewer) {
  EXPECT_EQ(consoleSelection(entries(3), {.level = {}, .limit = 10}).entries, entries(3));
  EXPECT_TRUE(consoleSelection({}, {}).entries.empty());
}

TEST(ConsoleSelection, TakesANegativeLimitForZero) {
  for (const std::int64_t limit : {std::int64_t{0}, std::int64_t{-1}, INT64_MIN}) {
    const WebViewConsoleResponse response =
        consoleSelection(entries(3), {.level = {}, .limit = limit});
    EXPECT_TRUE(response.entries.empty()) << limit;
    EXPECT_EQ(response.totalCount, 3);
  }
}

}  // namespace
}  // namespace tarnix::tests
