#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QEventLoop>
#include <QTimer>
#include <memory>

#include "tests/contract/qt6_host_world.h"

namespace tarnix::contract {
namespace {

platform::MainQueue& queue() { return *qt6Services().mainQueue; }

TEST(Qt6MainQueueTest, AFloodLeavesTheHostItsTurns) {
  bool hostHadItsTurn = false;
  auto again = std::make_shared<std::function<void()>>();
  *again = [&, again] {
    if (!hostHadItsTurn) {
      queue().async(*again);
    }
  };
  for (int closure = 0; closure < 10'000; ++closure) {
    queue().async(*again);
  }
  QTimer::singleShot(0, [&] { hostHadItsTurn = true; });
  EXPECT_TRUE(pumpUntil([&] { return hostHadItsTurn; }));
  *again = nullptr;
}

TEST(Qt6MainQueueTest, GoesOnInsideAClosureThatRunsALoopOfItsOwn) {
  std::vector<int> order;
  queue().async([&] {
    order.push_back(1);
    QEventLoop dialog;
    queue().async([&] {
      order.push_back(3);
      dialog.quit();
    });
    dialog.exec();
    order.push_back(4);
  });
  queue().async([&] { order.push_back(2); });
  ASSERT_TRUE(pumpUntil([&] { return order.size() == 4; }));
  EXPECT_EQ(order, (std::vector<int>{1, 2, 3, 4}));
}

// In a process of its own: application objects come and go in it. See the main function.
TEST(Qt6MainQueueTest, OutlivesApplicationObjects) {
  const pid_t child = fork();
  if (child == 0) {
    execl("/proc/self/exe", "tarnix_qt6_contract_tests", "--life-cycle", nullptr);
    _exit(127);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

}  // namespace
}  // namespace tarnix::contract
