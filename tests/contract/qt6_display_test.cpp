#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <QEventLoop>
#include <QTimer>
#include <chrono>
#include <thread>
#include <vector>

#include "platforms/qt6/base/qt_display.h"
#include "tests/contract/qt6_host_world.h"

namespace tarnix::contract {
namespace {

using platform::TickDelivery;
using Seconds = std::chrono::duration<double>;

constexpr double frameSeconds = 1.0 / 60;

/// The frames that one link shows.
class Frames {
 public:
  explicit Frames(TickDelivery delivery)
      : link_(qt6::QtDisplay::shared().displayLink(
            [this](Seconds timestamp) { times.push_back(timestamp.count()); }, delivery)) {}

  double length() const { return times.back() - times.front(); }
  void drop() { link_.reset(); }

  std::vector<double> times;

 private:
  std::unique_ptr<platform::DisplayLink> link_;
};

/// One wait of the loop that nothing ends early, but for the links themselves.
void rest(std::chrono::milliseconds time) {
  QEventLoop loop;
  QTimer::singleShot(time, &loop, &QEventLoop::quit);
  loop.exec();
}

class Qt6DisplayTest : public testing::TestWithParam<TickDelivery> {
 protected:
  void SetUp() override {
    qt6Services();
    rest(std::chrono::milliseconds(100));
    frames.times.clear();
  }

  Frames frames{GetParam()};
};

TEST_P(Qt6DisplayTest, EachFrameOfALoopAtRestIsShown) {
  rest(std::chrono::milliseconds(500));
  ASSERT_GE(frames.times.size(), 2U);
  EXPECT_GE(frames.length(), 0.3);
  const double shown = static_cast<double>(frames.times.size() - 1);
  EXPECT_LE(shown, frames.length() / frameSeconds + 3);
  if (GetParam() == TickDelivery::Deferred) {
    // The others are lost where the machine is too busy to wake the loop.
    EXPECT_GE(shown, frames.length() / frameSeconds - 3);
  }
}

TEST_P(Qt6DisplayTest, OneFrameOfABusyStretchIsShown) {
  rest(std::chrono::milliseconds(100));
  frames.times.clear();
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  const std::size_t during = frames.times.size();
  EXPECT_EQ(during, 0U);
  rest(std::chrono::milliseconds(100));
  ASSERT_GE(frames.times.size(), 2U);
  EXPECT_LT(static_cast<double>(frames.times.size()), 0.5 / frameSeconds);
}

TEST_P(Qt6DisplayTest, FramesAreInOrder) {
  rest(std::chrono::milliseconds(200));
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  rest(std::chrono::milliseconds(200));
  for (std::size_t index = 1; index < frames.times.size(); ++index) {
    EXPECT_GT(frames.times[index], frames.times[index - 1] + frameSeconds / 2);
  }
}

TEST_P(Qt6DisplayTest, NoneIsShownWithoutTheApplication) {
  qt6::QtDisplay::shared().stop();
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  frames.times.clear();
  qt6::QtDisplay::shared().start();
  rest(std::chrono::milliseconds(50));
  EXPECT_LE(frames.times.size(), 6U);
}

TEST_P(Qt6DisplayTest, ALinkMayEndInItsTick) {
  int ticks = 0;
  std::unique_ptr<platform::DisplayLink> link;
  link = qt6::QtDisplay::shared().displayLink(
      [&](Seconds) {
        if (++ticks == 3) {
          link.reset();
        }
      },
      GetParam());
  rest(std::chrono::milliseconds(300));
  EXPECT_EQ(ticks, 3);
}

INSTANTIATE_TEST_SUITE_P(, Qt6DisplayTest,
                         testing::Values(TickDelivery::AtOnce, TickDelivery::Deferred),
                         [](const auto& test) {
                           return test.param == TickDelivery::AtOnce ? "AtOnce" : "Deferred";
                         });

TEST(Qt6DeferredDisplayTest, ALoopAtRestIsNotWoken) {
  qt6Services();
  Frames frames(TickDelivery::Deferred);
  rest(std::chrono::milliseconds(100));
  int turns = 0;
  const QMetaObject::Connection counting =
      QObject::connect(QAbstractEventDispatcher::instance(),
                       &QAbstractEventDispatcher::aboutToBlock, [&turns] { ++turns; });
  rest(std::chrono::milliseconds(500));
  QObject::disconnect(counting);
  EXPECT_GE(frames.times.size(), 15U);
  EXPECT_LE(turns, 10);
}

}  // namespace
}  // namespace tarnix::contract
