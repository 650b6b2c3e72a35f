#include "probe/platform/main_thread.h"

#include <thread>

#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

class MainThread : public FakeWorldTest {};

TEST_F(MainThread, IsWhereTheQueueWasMade) {
  platform::assertMainThread();
  EXPECT_TRUE(world_.mainQueue.isCurrent());
  std::thread([this] { EXPECT_FALSE(world_.mainQueue.isCurrent()); }).join();
}

#ifndef NDEBUG
TEST_F(MainThread, IsInsistedOnInDebugBuilds) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  EXPECT_DEATH(std::thread([] { platform::assertMainThread(); }).join(), "");
}
#endif

}  // namespace
}  // namespace tarnix::tests
