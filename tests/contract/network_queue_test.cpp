#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "probe/platform/serial_queue.h"
#include "tests/contract/events.h"
#include "tests/contract/fake_network_world.h"
#include "tests/contract/linux_network_world.h"

namespace tarnix::contract {
namespace {

template <class World>
class NetworkQueueTest : public testing::Test {
 protected:
  platform::SerialQueue& queue() { return world.network().queue(); }

  World world;
};

using Worlds = testing::Types<FakeNetworkWorld, LinuxNetworkWorld>;
TYPED_TEST_SUITE(NetworkQueueTest, Worlds);

TYPED_TEST(NetworkQueueTest, RunsClosuresInTheOrderOfTheCalls) {
  std::vector<int> order;
  std::atomic<int> ran = 0;
  for (int index = 0; index < 1000; ++index) {
    this->queue().async([&, index] {
      order.push_back(index);
      ++ran;
    });
  }
  ASSERT_TRUE(this->world.pumpUntil([&] { return ran == 1000; }));
  for (int index = 0; index < 1000; ++index) {
    EXPECT_EQ(order[static_cast<std::size_t>(index)], index);
  }
}

TYPED_TEST(NetworkQueueTest, RunsAClosureGivenByAClosureAfterThoseBeforeIt) {
  Events events;
  this->queue().async([&] {
    this->queue().async([&] { events.add("inner"); });
    events.add("outer");
  });
  ASSERT_TRUE(this->world.pumpUntil([&] { return events.has("inner"); }));
  EXPECT_EQ(events.all(), (std::vector<std::string>{"outer", "inner"}));
}

TYPED_TEST(NetworkQueueTest, LetsGoOfClosuresOnceTheyRan) {
  auto token = std::make_shared<int>(0);
  const std::weak_ptr<int> watch = token;
  this->queue().async([token = std::move(token)] {});
  EXPECT_TRUE(this->world.pumpUntil([&] { return watch.expired(); }));
}

TEST(LinuxQueueTest, RunsClosuresOfManyThreadsOneAtATime) {
  LinuxNetworkWorld world;
  constexpr int threadCount = 4;
  constexpr int closureCount = 2000;
  std::vector<int> lastOf(threadCount, -1);
  std::atomic<int> running = 0;
  std::atomic<int> ran = 0;
  std::atomic<bool> isSerial = true;
  std::atomic<bool> isOrdered = true;
  std::vector<std::jthread> threads;
  for (int thread = 0; thread < threadCount; ++thread) {
    threads.emplace_back([&, thread] {
      for (int index = 0; index < closureCount; ++index) {
        world.network().queue().async([&, thread, index] {
          isSerial = isSerial && running++ == 0;
          isOrdered = isOrdered && lastOf[static_cast<std::size_t>(thread)] == index - 1;
          lastOf[static_cast<std::size_t>(thread)] = index;
          --running;
          ++ran;
        });
      }
    });
  }
  threads.clear();
  ASSERT_TRUE(world.pumpUntil([&] { return ran == threadCount * closureCount; }));
  EXPECT_TRUE(isSerial);
  EXPECT_TRUE(isOrdered);
}

TEST(LinuxQueueTest, LeavesTheHostsSignalsToTheHostsThreads) {
  LinuxNetworkWorld world;
  sigset_t blocked{};
  std::atomic<bool> isDone = false;
  world.network().queue().async([&] {
    pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
    isDone = true;
  });
  ASSERT_TRUE(world.pumpUntil([&] { return isDone.load(); }));
  for (const int signal : {SIGTERM, SIGINT, SIGCHLD, SIGUSR1, SIGALRM, SIGPIPE}) {
    EXPECT_EQ(sigismember(&blocked, signal), 1) << signal;
  }
}

}  // namespace
}  // namespace tarnix::contract
