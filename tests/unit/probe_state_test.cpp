#include "probe/model/probe_state.h"

#include <atomic>
#include <thread>

#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

TransferableLogEntry logEntry(std::uint64_t number) {
  TransferableLogEntry entry;
  entry.message = "a line that is too long to lie inside the string object itself";
  entry.line = number;
  return entry;
}

TransferableNetworkRequest request(std::int64_t number) {
  TransferableNetworkRequest exchange;
  exchange.statusCode = number;
  return exchange;
}

class ProbeStateTest : public FakeWorldTest {
 protected:
  std::vector<std::string> keysAfterRefresh() {
    state_.refreshUserDefaults();
    std::vector<std::string> keys;
    for (const TransferableUserDefaultsEntry& entry : state_.userDefaults()) {
      keys.push_back(entry.key);
    }
    return keys;
  }

  ProbeState state_;
};

TEST_F(ProbeStateTest, BeginsEmptyOnAnUnknownScreen) {
  EXPECT_TRUE(state_.httpRequests().empty());
  EXPECT_TRUE(state_.logEntries().empty());
  EXPECT_TRUE(state_.userDefaults().empty());
  EXPECT_TRUE(state_.recentRequests().empty());
  EXPECT_EQ(state_.currentScreen(), "Unknown");
}

TEST_F(ProbeStateTest, KeepsTheNewestFiveHundredLogEntries) {
  for (std::uint64_t number = 1; number <= 501; ++number) {
    state_.addLog(logEntry(number));
  }
  const std::vector<TransferableLogEntry> entries = state_.logEntries();
  ASSERT_EQ(entries.size(), 500U);
  for (std::size_t index = 0; index < entries.size(); ++index) {
    EXPECT_EQ(entries[index].line, index + 2);
  }
}

TEST_F(ProbeStateTest, KeepsTheNewestFiveHundredRequests) {
  for (std::int64_t number = 1; number <= 1234; ++number) {
    state_.addRequest(request(number));
  }
  const std::vector<TransferableNetworkRequest> requests = state_.httpRequests();
  ASSERT_EQ(requests.size(), 500U);
  EXPECT_EQ(requests.front().statusCode, 735);
  EXPECT_EQ(requests.back().statusCode, 1234);
}

TEST_F(ProbeStateTest, GivesTheLastFiveRequestsOldestFirst) {
  for (std::int64_t number = 1; number <= 3; ++number) {
    state_.addRequest(request(number));
  }
  EXPECT_EQ(state_.recentRequests(), state_.httpRequests());
  for (std::int64_t number = 4; number <= 777; ++number) {
    state_.addRequest(request(number));
  }
  const std::vector<TransferableNetworkRequest> recent = state_.recentRequests();
  ASSERT_EQ(recent.size(), 5U);
  EXPECT_EQ(recent.front().statusCode, 773);
  EXPECT_EQ(recent.back().statusCode, 777);
}

TEST_F(ProbeStateTest, RemembersTheScreen) {
  state_.setScreen("Home");
  EXPECT_EQ(state_.currentScreen(), "Home");
}

TEST_F(ProbeStateTest, ForgetsEverythingWhenCleared) {
  world_.userDefaults.values = {{"theme", {std::string("dark")}}};
  state_.addLog(logEntry(1));
  state_.addRequest(request(1));
  state_.refreshUserDefaults();
  state_.setScreen("Home");
  state_.clear();
  EXPECT_TRUE(state_.httpRequests().empty());
  EXPECT_TRUE(state_.logEntries().empty());
  EXPECT_TRUE(state_.userDefaults().empty());
  EXPECT_EQ(state_.currentScreen(), "Unknown");
}

TEST_F(ProbeStateTest, LeavesOutThePlatformsOwnSettings) {
  for (const char* key :
       {"NSLanguages", "nsSomething", "AppleLocale", "apple", "com.apple.x", "com.example", "AKx",
        "Ak", "PKy", "INNextThing", "INNex", "WebKitZ", "webkit", "xNS", "NS", ""}) {
    world_.userDefaults.values.push_back({key, {true}});
  }
  EXPECT_EQ(keysAfterRefresh(), (std::vector<std::string>{"", "Ak", "INNex", "apple", "com.example",
                                                          "nsSomething", "webkit", "xNS"}));
}

TEST_F(ProbeStateTest, SortsSettingsByUnicodeScalarValue) {
  for (const char* key : {"b", "a/z", "B", "\xf0\x9f\x8e\x89", "a", "\xef\xbf\xbd", "\xc3\xa9"}) {
    world_.userDefaults.values.push_back({key, {true}});
  }
  EXPECT_EQ(keysAfterRefresh(), (std::vector<std::string>{"B", "a", "a/z", "b", "\xc3\xa9",
                                                          "\xef\xbf\xbd", "\xf0\x9f\x8e\x89"}));
}

TEST_F(ProbeStateTest, DescribesSettings) {
  world_.userDefaults.values = {{"window/width", {std::int64_t{42}}}};
  state_.refreshUserDefaults();
  EXPECT_EQ(
      state_.userDefaults(),
      (std::vector<TransferableUserDefaultsEntry>{{"window/width", "window/width", "42", "Int"}}));
}

TEST_F(ProbeStateTest, ReplacesSettingsAtEachRefresh) {
  world_.userDefaults.values = {{"old", {true}}, {"both", {true}}};
  state_.refreshUserDefaults();
  world_.userDefaults.values = {{"both", {false}}, {"new", {true}}};
  EXPECT_EQ(keysAfterRefresh(), (std::vector<std::string>{"both", "new"}));
  EXPECT_EQ(state_.userDefaults()[0].displayValue, "false");
}

TEST_F(ProbeStateTest, TakesWritersAndReadersFromManyThreads) {
  constexpr std::uint64_t entriesAWriter = 3000;
  constexpr std::uint64_t writerCount = 4;
  std::atomic<std::uint64_t> running = writerCount;
  std::vector<std::thread> threads;
  for (std::uint64_t writer = 0; writer < writerCount; ++writer) {
    threads.emplace_back([this, writer, &running] {
      for (std::uint64_t number = 0; number < entriesAWriter; ++number) {
        state_.addLog(logEntry(writer * entriesAWriter + number));
        state_.addRequest(request(static_cast<std::int64_t>(number)));
        state_.setScreen("Screen " + std::to_string(writer));
      }
      --running;
    });
  }
  threads.emplace_back([this, &running] {
    while (running > 0) {
      EXPECT_LE(state_.logEntries().size(), ProbeState::capacity);
      EXPECT_LE(state_.recentRequests().size(), ProbeState::recentRequestCount);
      EXPECT_FALSE(state_.currentScreen().empty());
    }
  });
  while (running > 0) {
    state_.refreshUserDefaults();
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  // Each writer's own entries stand in the order in which it wrote them.
  std::array<std::uint64_t, writerCount> last{};
  const std::vector<TransferableLogEntry> entries = state_.logEntries();
  EXPECT_EQ(entries.size(), ProbeState::capacity);
  for (const TransferableLogEntry& entry : entries) {
    std::uint64_t& previous = last[entry.line / entriesAWriter];
    EXPECT_TRUE(previous == 0 || previous < entry.line);
    previous = entry.line;
  }
}

}  // namespace
}  // namespace tarnix::tests
