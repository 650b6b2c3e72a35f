#include <gtest/gtest.h>

#include "probe/platform/overlay_surface.h"
#include "tests/contract/fake_host_world.h"
#include "tests/contract/qt6_host_world.h"
#include "tests/contract/screen_walk.h"

namespace tarnix::contract {
namespace {

template <class World>
class OverlaySurfacesTest : public testing::Test {
 protected:
  std::unique_ptr<platform::OverlaySurface> makeSurface() {
    return world.overlaySurfaces().makeSurface(*world.application().connectedScenes().at(0));
  }

  void showOneButton() {
    world.show({.size = {400, 300}, .things = {{.label = "Save", .frame = {{10, 20}, {100, 40}}}}});
  }

  static platform::DisplayList redSquare() {
    return {{{.shape =
                  platform::RoundedRectangle{
                      .frame = {{0, 0}, {50, 50}}, .cornerRadius = 4, .fill = {1, 0, 0, 1}},
              .transform = {1, {200, 100}}}}};
  }

  World world;
};

using Worlds = testing::Types<FakeHostWorld, WidgetsHostWorld, QuickHostWorld>;
TYPED_TEST_SUITE(OverlaySurfacesTest, Worlds);

TYPED_TEST(OverlaySurfacesTest, AreAsLargeAsTheWindowInFront) {
  this->showOneButton();
  const auto surface = this->makeSurface();
  ASSERT_NE(surface, nullptr);
  const auto place = surface->place();
  ASSERT_TRUE(place);
  EXPECT_EQ(place->size, (platform::Size{400, 300}));
  EXPECT_EQ(place->bottomInset, 0);
  EXPECT_EQ(place->movedBy, platform::Point());
}

TYPED_TEST(OverlaySurfacesTest, AreInNoListOfViews) {
  this->showOneButton();
  const auto surface = this->makeSurface();
  const auto before = keyWindowOf(this->world.application())->subviews().size();
  const auto windowsBefore = windowsOf(this->world.application()).size();
  ASSERT_TRUE(surface->place());
  surface->show(this->redSquare());
  EXPECT_EQ(keyWindowOf(this->world.application())->subviews().size(), before);
  EXPECT_EQ(windowsOf(this->world.application()).size(), windowsBefore);
}

TYPED_TEST(OverlaySurfacesTest, HaveNoPlaceOnceTheWindowsAreGone) {
  this->showOneButton();
  const auto surface = this->makeSurface();
  ASSERT_TRUE(surface->place());
  surface->show(this->redSquare());
  this->world.removeAll();
  EXPECT_FALSE(surface->place());
  surface->show(this->redSquare());
}

TYPED_TEST(OverlaySurfacesTest, MeasureText) {
  this->showOneButton();
  platform::OverlaySurfaces& surfaces = this->world.overlaySurfaces();
  const platform::Size one = surfaces.sizeOf("abc", {.size = 11});
  const platform::Size two = surfaces.sizeOf("abcabc", {.size = 11});
  EXPECT_GT(one.width, 5);
  EXPECT_GT(two.width, one.width);
  EXPECT_GE(one.height, 11);
  EXPECT_EQ(surfaces.sizeOf("", {.size = 11}).width, 0);
  EXPECT_EQ(surfaces.sizeOf("iii", {.size = 10, .isMonospaced = true}).width,
            surfaces.sizeOf("mmm", {.size = 10, .isMonospaced = true}).width);
}

}  // namespace
}  // namespace tarnix::contract
