#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "probe/network/probe_mock_rules.h"

namespace tarnix::tests {
namespace {

using MockRule = ProbeMockRules::MockRule;

MockRule ruleFor(const std::string& pattern, const char* mode) {
  MockRule rule;
  rule.id = Uuid::random();
  rule.name = pattern;
  rule.urlPattern = pattern;
  rule.matchMode = mode;
  return rule;
}

platform::UrlRequest requestFor(const std::string& url) {
  platform::UrlRequest request;
  request.url = Url(url);
  return request;
}

// One thread adds and removes as a companion does; others look up as the host's threads do. The
// rule that stays must be found at every moment, and one that is gone never again.
TEST(NetworkRulesConcurrencyTest, LookupsAndChangesRunAtOnce) {
  constexpr int ruleCount = 300;
  constexpr int lookupThreads = 3;
  constexpr int lookupsPerThread = 700;
  ProbeMockRules rules;
  for (int index = 0; index < ruleCount; ++index) {
    rules.addRule(ruleFor("never/" + std::to_string(index), index % 3 == 0 ? "regex" : "contains"));
  }
  rules.addRule(ruleFor("always", "regex"));

  std::atomic<int> wrong = 0;
  std::atomic<bool> isDone = false;
  std::vector<std::thread> threads;
  for (int thread = 0; thread < lookupThreads; ++thread) {
    threads.emplace_back([&] {
      for (int turn = 0; turn < lookupsPerThread; ++turn) {
        const auto match = rules.findMatch(requestFor("http://x/always"));
        wrong += match && match->name == "always" ? 0 : 1;
      }
    });
  }
  std::thread changer([&] {
    while (!isDone) {
      const MockRule passing = ruleFor("passing", "prefix");
      rules.addRule(passing);
      wrong += rules.findMatch(requestFor("passing")) ? 0 : 1;
      rules.removeRule(passing.id);
      wrong += rules.findMatch(requestFor("passing")) ? 1 : 0;
    }
  });
  for (std::thread& thread : threads) {
    thread.join();
  }
  isDone = true;
  changer.join();
  EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace tarnix::tests
