#include <gtest/gtest.h>

#include "probe/platform/view.h"
#include "tests/contract/fake_host_world.h"
#include "tests/contract/qt6_host_world.h"
#include "tests/contract/screen_walk.h"

/// What a list of views is made from.
namespace tarnix::contract {
namespace {

using platform::View;
using platform::ViewKind;

template <class World>
class ViewReadingTest : public testing::Test {
 protected:
  std::shared_ptr<View> view(const std::string& label) {
    return viewLabelled(world.application(), label);
  }

  World world;
};

using Worlds = testing::Types<FakeHostWorld, WidgetsHostWorld, QuickHostWorld>;
TYPED_TEST_SUITE(ViewReadingTest, Worlds);

constexpr platform::Rect place{{10, 20}, {100, 40}};

TYPED_TEST(ViewReadingTest, ThingsAreOfTheKindThatTheirClassIsOf) {
  this->world.show({.things = {{.kind = Thing::Kind::button, .label = "Save", .frame = place},
                               {.kind = Thing::Kind::label, .label = "Total", .frame = place},
                               {.kind = Thing::Kind::field, .label = "Name", .frame = place}}});
  EXPECT_EQ(this->view("Save")->kind(), ViewKind::button);
  EXPECT_EQ(this->view("Total")->kind(), ViewKind::label);
  EXPECT_EQ(this->view("Name")->kind(), ViewKind::textField);
}

TYPED_TEST(ViewReadingTest, ThingsSayHowTheyReactToTouch) {
  this->world.show(
      {.things = {
           {.kind = Thing::Kind::button, .label = "Save", .frame = place},
           {.kind = Thing::Kind::button, .label = "Gone", .frame = place, .isDisabled = true},
           {.kind = Thing::Kind::label, .label = "Total", .frame = place},
           {.kind = Thing::Kind::field, .label = "Name", .frame = place}}});
  EXPECT_TRUE(this->view("Save")->touchReactions().isUserInteractionEnabled);
  EXPECT_TRUE(this->view("Save")->touchReactions().isControl);
  EXPECT_FALSE(this->view("Gone")->touchReactions().isUserInteractionEnabled);
  EXPECT_FALSE(this->view("Total")->touchReactions().isUserInteractionEnabled);
  EXPECT_TRUE(this->view("Name")->touchReactions().isUserInteractionEnabled);
  EXPECT_TRUE(this->view("Name")->touchReactions().isControl);
}

TYPED_TEST(ViewReadingTest, TheWholeFrameIsNotCutToWhatCanBeSeen) {
  const platform::Rect outside{{-30, 280}, {100, 40}};
  this->world.show({.size = {400, 300}, .things = {{.label = "Save", .frame = outside}}});
  EXPECT_EQ(this->view("Save")->wholeFrame(), outside);
}

TYPED_TEST(ViewReadingTest, NothingHasANameThatItsAuthorDidNotGive) {
  this->world.show({.things = {{.label = "Save", .frame = place}}});
  EXPECT_EQ(this->view("Save")->accessibilityIdentifier(), std::nullopt);
}

TYPED_TEST(ViewReadingTest, AViewThatHasGoneReactsToNothing) {
  this->world.show({.things = {{.label = "Save", .frame = place}}});
  const std::shared_ptr<View> button = this->view("Save");
  this->world.removeAll();
  EXPECT_FALSE(button->touchReactions().isUserInteractionEnabled);
  EXPECT_EQ(button->kind(), ViewKind::other);
  EXPECT_EQ(button->wholeFrame().size, (platform::Size{0, 0}));
  EXPECT_EQ(button->superview(), nullptr);
}

TEST(Qt6ViewReading, ASuperviewIsWhatAViewStandsIn) {
  WidgetsHostWorld world;
  world.show({.things = {{.label = "Save", .frame = place}}});
  const std::shared_ptr<View> button = viewLabelled(world.application(), "Save");
  ASSERT_NE(button, nullptr);
  const std::shared_ptr<View> window = button->superview();
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(window->className(), "QWidget");
  EXPECT_EQ(window->superview(), nullptr);
}

class Board : public QWidget {
 public:
  using QWidget::QWidget;

 protected:
  void mousePressEvent(QMouseEvent*) override {}
};

TEST(Qt6ViewReading, AWidgetThatTakesPressesByItselfReactsToTouch) {
  WidgetsHostWorld world;
  QWidget window;
  Board board(&window);
  board.setObjectName("board");
  QWidget plain(&window);
  plain.setObjectName("plain");
  window.resize(200, 100);
  window.show();
  ASSERT_TRUE(world.pumpUntil([&] { return keyWindowOf(world.application()) != nullptr; }));
  for (const auto& view : viewsBelow(*keyWindowOf(world.application()))) {
    EXPECT_EQ(view->touchReactions().hasGestureRecognizers,
              view->accessibilityIdentifier() == "board");
  }
}

TEST(Qt6ViewReading, AnAuthorsNameIsTheIdentifier) {
  WidgetsHostWorld world;
  QWidget window;
  QWidget named(&window);
  named.setObjectName("cart");
  QWidget toolkits(&window);
  toolkits.setObjectName("qt_inner");
  window.resize(200, 100);
  window.show();
  ASSERT_TRUE(world.pumpUntil([&] { return keyWindowOf(world.application()) != nullptr; }));
  std::vector<std::string> names;
  for (const auto& view : viewsBelow(*keyWindowOf(world.application()))) {
    names.push_back(view->accessibilityIdentifier().value_or("-"));
  }
  EXPECT_EQ(names, (std::vector<std::string>{"cart", "-"}));
}

}  // namespace
}  // namespace tarnix::contract
