#include "probe/platform/regular_expression.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

namespace tarnix::tests {
namespace {

using platform::compileRegularExpression;

TEST(RegularExpressionTest, FindsAMatchAnywhere) {
  const struct {
    const char* pattern;
    const char* text;
    bool matches;
  } cases[] = {
      {"users/[0-9]+", "https://shop.test/users/42?x", true},
      {"^users", "https://shop.test/users", false},
      {"users$", "https://shop.test/users", true},
      {"USERS", "https://shop.test/users", false},
      {"(?i)USERS", "https://shop.test/users", true},
      {"^$", "", true},
      {"^$", "x", false},
      {"x*", "", true},
      {"x", "", false},
      {"(a|b)\\1", "xbby", true},
      {"(?<=v)[2-9]", "api/v1/v3", true},
      {"\\p{L}", "\xC3\xA4", true},
      {"^.$", "\xF0\x9F\x98\x80", true},  // one character beyond the basic plane
      {"a.b", "a\nb", false},
  };
  for (const auto& [pattern, text, matches] : cases) {
    const auto expression = compileRegularExpression(pattern);
    ASSERT_NE(expression, nullptr) << pattern;
    EXPECT_EQ(expression->hasMatch(text), matches) << pattern << " in " << text;
    EXPECT_EQ(expression->hasMatch(text), matches) << pattern << ", asked again";
  }
}

TEST(RegularExpressionTest, RefusesWhatIsNoExpression) {
  for (const char* pattern : {"", "([", "*", "a{2,1}", "\\", "(?<n>a)(?<n>b)", "[z-a]"}) {
    EXPECT_EQ(compileRegularExpression(pattern), nullptr) << pattern;
  }
}

TEST(RegularExpressionTest, GivesUpOnAnExpressionThatNeverEnds) {
  const auto expression = compileRegularExpression("(a+)+$");
  ASSERT_NE(expression, nullptr);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(expression->hasMatch(std::string(64, 'a') + "!"));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
  EXPECT_TRUE(expression->hasMatch("aaa")) << "and serves the next text";
}

TEST(RegularExpressionTest, ServesManyThreadsAtOnce) {
  const auto expression = compileRegularExpression("item/(\\d+)$");
  ASSERT_NE(expression, nullptr);
  std::atomic<int> wrong = 0;
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&, thread] {
      for (int turn = 0; turn < 500; ++turn) {
        const std::string number = std::to_string(thread * 1000 + turn);
        wrong += expression->hasMatch("item/" + number) ? 0 : 1;
        wrong += expression->hasMatch("item/" + number + "x") ? 1 : 0;
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace tarnix::tests
