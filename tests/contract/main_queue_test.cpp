#include "probe/platform/main_queue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include "tests/contract/fake_host_world.h"
#include "tests/contract/qt6_host_world.h"

namespace tarnix::contract {
namespace {

using std::chrono::milliseconds;

template <class World>
class MainQueueTest : public testing::Test {
 protected:
  platform::MainQueue& queue() { return world.mainQueue(); }

  World world;
};

using Worlds = testing::Types<FakeHostWorld, Qt6HostWorld>;
TYPED_TEST_SUITE(MainQueueTest, Worlds);

TYPED_TEST(MainQueueTest, RunsNothingInsideTheCall) {
  bool ran = false;
  this->queue().async([&] { ran = true; });
  EXPECT_FALSE(ran);
  EXPECT_TRUE(this->world.pumpUntil([&] { return ran; }));
}

TYPED_TEST(MainQueueTest, RunsClosuresInTheOrderOfTheCalls) {
  std::vector<int> order;
  for (int index = 0; index < 1000; ++index) {
    this->queue().async([&, index] { order.push_back(index); });
  }
  ASSERT_TRUE(this->world.pumpUntil([&] { return order.size() == 1000; }));
  EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TYPED_TEST(MainQueueTest, RunsAClosureGivenByAClosureAfterThoseBeforeIt) {
  std::vector<int> order;
  this->queue().async([&] {
    this->queue().async([&] { order.push_back(3); });
    order.push_back(1);
  });
  this->queue().async([&] { order.push_back(2); });
  ASSERT_TRUE(this->world.pumpUntil([&] { return order.size() == 3; }));
  EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
}

TYPED_TEST(MainQueueTest, LetsGoOfClosuresOnceTheyRan) {
  auto token = std::make_shared<int>(0);
  const std::weak_ptr<int> watch = token;
  this->queue().async([token] {});
  this->queue().asyncAfter(milliseconds(1), [token = std::move(token)] {});
  EXPECT_TRUE(this->world.pumpUntil([&] { return watch.expired(); }));
}

TYPED_TEST(MainQueueTest, KeepsTheOrderOfEachThread) {
  constexpr int threadCount = 4;
  constexpr int closureCount = 500;
  std::vector<int> next(threadCount, 0);
  bool isOrdered = true;
  bool isMain = true;
  int ran = 0;
  {
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
      threads.emplace_back([&, thread] {
        for (int index = 0; index < closureCount; ++index) {
          this->queue().async([&, thread, index] {
            isOrdered = isOrdered && next[static_cast<std::size_t>(thread)]++ == index;
            isMain = isMain && this->queue().isCurrent();
            ++ran;
          });
        }
      });
    }
  }
  ASSERT_TRUE(this->world.pumpUntil([&] { return ran == threadCount * closureCount; }));
  EXPECT_TRUE(isOrdered);
  EXPECT_TRUE(isMain);
}

TYPED_TEST(MainQueueTest, WaitsForTheDelay) {
  bool ran = false;
  this->queue().asyncAfter(milliseconds(60), [&] { ran = true; });
  this->world.letPass(milliseconds(20));
  EXPECT_FALSE(ran);
  this->world.letPass(milliseconds(60));
  EXPECT_TRUE(this->world.pumpUntil([&] { return ran; }));
}

TYPED_TEST(MainQueueTest, RunsTheShorterDelayFirst) {
  std::vector<int> order;
  this->queue().asyncAfter(milliseconds(30), [&] { order.push_back(2); });
  this->queue().asyncAfter(milliseconds(10), [&] { order.push_back(1); });
  ASSERT_TRUE(this->world.pumpUntil([&] { return order.size() == 2; }));
  EXPECT_EQ(order, (std::vector<int>{1, 2}));
}

TYPED_TEST(MainQueueTest, TimersFireUntilTheyAreDestroyed) {
  int ticks = 0;
  auto timer = this->queue().scheduledTimer(milliseconds(5), [&] { ++ticks; });
  EXPECT_EQ(ticks, 0);
  ASSERT_TRUE(this->world.pumpUntil([&] { return ticks >= 3; }));
  timer.reset();
  const int atEnd = ticks;
  this->world.letPass(milliseconds(30));
  EXPECT_EQ(ticks, atEnd);
}

TYPED_TEST(MainQueueTest, ATimerMayEndInsideItsOwnTick) {
  int ticks = 0;
  auto token = std::make_shared<int>(0);
  const std::weak_ptr<int> watch = token;
  std::unique_ptr<platform::Timer> timer;
  timer = this->queue().scheduledTimer(milliseconds(1), [&, token = std::move(token)] {
    ++ticks;
    timer.reset();
    EXPECT_EQ(token.use_count(), 1);
  });
  ASSERT_TRUE(this->world.pumpUntil([&] { return ticks == 1; }));
  this->world.letPass(milliseconds(20));
  EXPECT_EQ(ticks, 1);
  EXPECT_TRUE(watch.expired());
}

TYPED_TEST(MainQueueTest, LeavesOutTicksThatTheLoopWasTooBusyFor) {
  int ticks = 0;
  const auto timer = this->queue().scheduledTimer(milliseconds(10), [&] { ++ticks; });
  // On virtual time nothing keeps the loop busy: sleeping is not seen there.
  std::this_thread::sleep_for(milliseconds(100));
  this->world.letPass(milliseconds(0));
  this->world.letPass(milliseconds(15));
  EXPECT_LE(ticks, 4);
}

TYPED_TEST(MainQueueTest, KnowsItsThread) {
  EXPECT_TRUE(this->queue().isCurrent());
  bool elsewhere = true;
  std::jthread([&] { elsewhere = this->queue().isCurrent(); }).join();
  EXPECT_FALSE(elsewhere);
}

}  // namespace
}  // namespace tarnix::contract
