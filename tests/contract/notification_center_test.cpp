#include "probe/platform/notification_center.h"

#include <gtest/gtest.h>

#include <QWindow>
#include <memory>
#include <thread>

#include "platforms/qt6/base/qt_notification_center.h"
#include "tests/contract/fake_host_world.h"
#include "tests/contract/qt6_host_world.h"
#include "tests/fakes/fake_notification_center.h"

namespace tarnix::contract {
namespace {

constexpr const char* didFinishLaunching = "UIApplicationDidFinishLaunchingNotification";

class FakeNotificationWorld : public FakeHostWorld {
 public:
  platform::NotificationCenter& center() { return center_; }
  void launch() { center_.post(didFinishLaunching); }

 private:
  fakes::FakeNotificationCenter center_{mainQueue()};
};

/// A centre of its own, since a process launches once.
class Qt6NotificationWorld : public Qt6HostWorld {
 public:
  Qt6NotificationWorld() {
    qt6Services();
    center_.start();
  }
  ~Qt6NotificationWorld() { center_.stop(); }

  platform::NotificationCenter& center() { return center_; }
  void launch() { window_.show(); }

 private:
  qt6::QtNotificationCenter center_;
  QWindow window_;
};

template <class World>
class NotificationCenterTest : public testing::Test {
 protected:
  World world;
};

using Worlds = testing::Types<FakeNotificationWorld, Qt6NotificationWorld>;
TYPED_TEST_SUITE(NotificationCenterTest, Worlds);

TYPED_TEST(NotificationCenterTest, TellsEveryObserverOnTheMainQueueOnce) {
  int first = 0;
  int second = 0;
  bool isMain = false;
  this->world.center().addObserver(didFinishLaunching, [&] {
    ++first;
    isMain = this->world.mainQueue().isCurrent();
  });
  std::jthread([&] {
    this->world.center().addObserver(didFinishLaunching, [&] { ++second; });
  }).join();
  this->world.letPass(std::chrono::milliseconds(20));
  EXPECT_EQ(first, 0);
  this->world.launch();
  ASSERT_TRUE(this->world.pumpUntil([&] { return first > 0 && second > 0; }));
  this->world.letPass(std::chrono::milliseconds(20));
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 1);
  EXPECT_TRUE(isMain);
}

TYPED_TEST(NotificationCenterTest, TellsNobodyOfOtherNames) {
  bool wasTold = false;
  bool hasLaunched = false;
  this->world.center().addObserver("SomethingElse", [&] { wasTold = true; });
  this->world.center().addObserver(didFinishLaunching, [&] { hasLaunched = true; });
  this->world.launch();
  ASSERT_TRUE(this->world.pumpUntil([&] { return hasLaunched; }));
  EXPECT_FALSE(wasTold);
}

TEST(Qt6NotificationCenterTest, NoticesAWindowThatWasThereBefore) {
  QWindow window;
  window.show();
  ASSERT_TRUE(pumpUntil([&] { return window.isExposed(); }));
  qt6Services();
  qt6::QtNotificationCenter center;
  bool hasLaunched = false;
  center.start();
  center.addObserver(didFinishLaunching, [&] { hasLaunched = true; });
  EXPECT_TRUE(pumpUntil([&] { return hasLaunched; }));
  center.stop();
}

}  // namespace
}  // namespace tarnix::contract
