#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <memory>
#include <string_view>
#include <vector>

#include "tests/contract/qt6_host_world.h"

namespace tarnix::contract {
namespace {

/// Work handed in before there is an application object, between two, and after the last. Returns
/// the process's exit code: the number of the step that went wrong, or zero.
int runLifeCycle(int argc, char** argv) {
  platform::MainQueue& queue = *qt6Services().mainQueue;
  std::vector<int> order;
  std::unique_ptr<platform::Timer> timer;
  queue.async([&] { order.push_back(1); });
  queue.async([&] { order.push_back(2); });
  queue.asyncAfter(std::chrono::milliseconds(20), [&] { order.push_back(3); });
  if (!queue.isCurrent() || !order.empty()) {
    return 1;
  }
  int ticks = 0;
  {
    const QCoreApplication small(argc, argv);
    timer = queue.scheduledTimer(std::chrono::milliseconds(5), [&] { ++ticks; });
    if (!pumpUntil([&] { return order.size() == 3 && ticks > 0; })) {
      return 2;
    }
    queue.async([&] { order.push_back(4); });
    queue.asyncAfter(std::chrono::milliseconds(1), [&] { order.push_back(5); });
  }
  queue.async([&] { order.push_back(6); });
  const int ticksBefore = ticks;
  {
    const QApplication application(argc, argv);
    if (!pumpUntil([&] { return order.size() == 6 && ticks > ticksBefore; })) {
      return 3;
    }
  }
  queue.async([&] { order.push_back(7); });
  timer.reset();
  return order.size() == 6 ? 0 : 4;
}

}  // namespace
}  // namespace tarnix::contract

int main(int argc, char** argv) {
  const QTemporaryDir home;
  qputenv("HOME", home.path().toUtf8());
  qputenv("XDG_RUNTIME_DIR", home.path().toUtf8());
  qputenv("XDG_CONFIG_HOME", home.path().toUtf8() + "/config");
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  // The same on every machine.
  qputenv("QT_QUICK_CONTROLS_STYLE", "Basic");
  qputenv("LANG", "C.UTF-8");
  if (argc == 2 && std::string_view(argv[1]) == "--life-cycle") {
    return tarnix::contract::runLifeCycle(argc, argv);
  }
  testing::InitGoogleTest(&argc, argv);
  // Before the application object, as in a host.
  tarnix::contract::qt6Services();
  QApplication application(argc, argv);
  application.setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
