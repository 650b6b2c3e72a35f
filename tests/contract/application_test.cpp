#include "probe/platform/application.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/contract/fake_host_world.h"
#include "tests/contract/qt6_host_world.h"
#include "tests/contract/screen_walk.h"

namespace tarnix::contract {
namespace {

template <class World>
class ApplicationTest : public testing::Test {
 protected:
  World world;
};

using Worlds = testing::Types<FakeHostWorld, WidgetsHostWorld, QuickHostWorld>;
TYPED_TEST_SUITE(ApplicationTest, Worlds);

ScreenDescription oneButton() {
  return {.size = {400, 300}, .things = {{.label = "Save", .frame = {{10, 20}, {100, 40}}}}};
}

TYPED_TEST(ApplicationTest, HasNoWindowsBeforeItShowsOne) {
  EXPECT_TRUE(windowsOf(this->world.application()).empty());
  EXPECT_EQ(keyWindowOf(this->world.application()), nullptr);
}

TYPED_TEST(ApplicationTest, HasOneKeyWindowAmongItsWindows) {
  this->world.show(oneButton());
  this->world.showSecondWindow();
  const auto windows = windowsOf(this->world.application());
  ASSERT_EQ(windows.size(), 2U);
  EXPECT_EQ(std::count_if(windows.begin(), windows.end(),
                          [](const auto& window) { return window->isKeyWindow(); }),
            1);
}

TYPED_TEST(ApplicationTest, TheKeyWindowStandsAtTheOriginOfTheScreen) {
  this->world.show(oneButton());
  const auto window = keyWindowOf(this->world.application());
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(window->accessibilityFrame(), (platform::Rect{{0, 0}, {400, 300}}));
  EXPECT_FALSE(window->isHidden());
  EXPECT_DOUBLE_EQ(window->alpha(), 1);
  EXPECT_FALSE(window->className().empty());
}

TYPED_TEST(ApplicationTest, HasNoWindowsOnceTheyAreGone) {
  this->world.show(oneButton());
  this->world.removeAll();
  EXPECT_TRUE(windowsOf(this->world.application()).empty());
}

}  // namespace
}  // namespace tarnix::contract
