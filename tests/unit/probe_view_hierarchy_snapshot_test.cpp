#include "probe/inspect/probe_view_hierarchy_snapshot.h"

#include <cmath>
#include <limits>

#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

using fakes::FakeView;
using platform::Rect;
using platform::TouchReactions;
using platform::ViewKind;
using ProbeViewHierarchySnapshot::capture;
using ProbeViewHierarchySnapshot::Element;
using Names = std::vector<std::string>;

constexpr Rect place{{10, 20}, {100, 40}};

std::shared_ptr<FakeView> view(std::string label, Rect frame = place) {
  auto result = std::make_shared<FakeView>();
  result->label = std::move(label);
  result->frame = frame;
  return result;
}

constexpr TouchReactions control{.isUserInteractionEnabled = true, .isControl = true};
constexpr TouchReactions gesture{.isUserInteractionEnabled = true, .hasGestureRecognizers = true};
constexpr TouchReactions nothing{.isUserInteractionEnabled = true};

std::shared_ptr<FakeView> reactingTo(TouchReactions reactions, Rect frame = place) {
  auto result = view("", frame);
  result->reactions = reactions;
  return result;
}

class ProbeViewHierarchySnapshotTest : public FakeWorldTest {
 protected:
  /// The labels of what is listed; "-" for those without.
  static Names labels() {
    Names result;
    for (const Element& element : capture()) {
      result.push_back(element.label.value_or("-"));
    }
    return result;
  }

  /// The only thing that a window with `view` in it lists.
  Element only(std::shared_ptr<FakeView> view) {
    window_->children = {std::move(view)};
    const std::vector<Element> elements = capture();
    EXPECT_EQ(elements.size(), 1U);
    return elements.empty() ? Element{} : elements[0];
  }

  std::shared_ptr<fakes::FakeWindow> window_ = world_.application.addKeyWindow();
};

TEST_F(ProbeViewHierarchySnapshotTest, FindsNothingWithoutAKeyWindow) {
  window_->children = {view("A")};
  EXPECT_EQ(labels(), Names{"A"});
  window_->key = false;
  EXPECT_EQ(labels(), Names{});
  world_.application.scenes.clear();
  EXPECT_EQ(labels(), Names{});
}

TEST_F(ProbeViewHierarchySnapshotTest, TakesTheKeyWindowWhateverItIsCalled) {
  window_->name = "ProbeWindow";
  window_->children = {view("A")};
  EXPECT_EQ(labels(), Names{"A"});
}

TEST_F(ProbeViewHierarchySnapshotTest, ListsTheWindowItself) {
  window_->label = "Main";
  EXPECT_EQ(labels(), Names{"Main"});
}

TEST_F(ProbeViewHierarchySnapshotTest, PassesOverWhatIsHiddenWithEverythingInIt) {
  auto container = view("Container");
  container->children = {view("Inside", {{10, 30}, {10, 10}})};
  window_->children = {container};
  EXPECT_EQ(labels(), (Names{"Container", "Inside"}));
  container->hidden = true;
  EXPECT_EQ(labels(), Names{});
}

TEST_F(ProbeViewHierarchySnapshotTest, PassesOverWhatIsNearlyTransparentWithEverythingInIt) {
  auto container = view("Container");
  container->children = {view("Inside", {{10, 30}, {10, 10}})};
  window_->children = {container};
  struct Case {
    double alpha;
    bool isListed;
  };
  for (const auto& [alpha, isListed] :
       {Case{0, false}, Case{0.01, false}, Case{0.011, true}, Case{1, true}, Case{NAN, false}}) {
    container->opacity = alpha;
    EXPECT_EQ(labels().size(), isListed ? 2U : 0U) << alpha;
  }
}

TEST_F(ProbeViewHierarchySnapshotTest, NamesTheKind) {
  struct Case {
    ViewKind kind;
    const char* type;
  };
  for (const auto& [kind, type] :
       {Case{ViewKind::button, "Button"}, Case{ViewKind::label, "Label"},
        Case{ViewKind::textField, "TextField"}, Case{ViewKind::textView, "TextView"},
        Case{ViewKind::toggle, "Switch"}, Case{ViewKind::slider, "Slider"},
        Case{ViewKind::image, "Image"}, Case{ViewKind::tableCell, "Cell"},
        Case{ViewKind::collectionCell, "Cell"}, Case{ViewKind::other, "FancyView"}}) {
    auto thing = view("A");
    thing->name = "Shop.FancyView";
    thing->viewKind = kind;
    EXPECT_EQ(only(thing).type, type);
  }
}

TEST_F(ProbeViewHierarchySnapshotTest, NamesAnyOtherByTheLastPieceOfItsClass) {
  struct Case {
    const char* className;
    const char* type;
  };
  for (const auto& [className, type] :
       {Case{"FancyView", "FancyView"}, Case{"Shop.FancyView", "FancyView"}, Case{"A.B.C", "C"},
        Case{"Shop.", "Shop"}, Case{".Shop", "Shop"}, Case{"", "View"}, Case{"..", "View"},
        Case{"Holder<Shop.Cart>", "Cart>"}}) {
    auto thing = view("A");
    thing->name = className;
    EXPECT_EQ(only(thing).type, type) << className;
  }
}

TEST_F(ProbeViewHierarchySnapshotTest, TellsAnEmptyLabelFromNone) {
  auto thing = view("");
  thing->identifier = "cart";
  EXPECT_EQ(only(thing).label, std::nullopt);
  EXPECT_EQ(only(thing).identifier, "cart");
  thing->hasEmptyLabel = true;
  EXPECT_EQ(only(thing).label, "");
}

TEST_F(ProbeViewHierarchySnapshotTest, ListsWhatHasALabelOrAnIdentifier) {
  auto thing = view("");
  window_->children = {thing};
  EXPECT_EQ(labels(), Names{});
  thing->hasEmptyLabel = true;
  EXPECT_EQ(labels(), Names{""});
  thing->hasEmptyLabel = false;
  thing->identifier = "";
  EXPECT_EQ(labels(), Names{"-"});
}

TEST_F(ProbeViewHierarchySnapshotTest, ListsWhatHasNeitherWhenItReactsAndIsLargeEnough) {
  struct Case {
    double width;
    double height;
    bool isListed;
  };
  for (const auto& [width, height, isListed] :
       {Case{10, 44, false}, Case{11, 44, true}, Case{44, 10, false}, Case{44, 11, true},
        Case{10.5, 10.5, true}, Case{0, 0, false}}) {
    window_->children = {reactingTo(control, {{0, 0}, {width, height}})};
    const std::vector<Element> elements = capture();
    ASSERT_EQ(elements.size(), isListed ? 1U : 0U) << width << " x " << height;
    if (isListed) {
      EXPECT_TRUE(elements[0].isInteractive);
    }
  }
  window_->children = {reactingTo(nothing)};
  EXPECT_EQ(labels(), Names{});
}

TEST_F(ProbeViewHierarchySnapshotTest, SaysWhatReactsToTouch) {
  struct Case {
    TouchReactions reactions;
    bool isElement;
    bool isInteractive;
  };
  constexpr TouchReactions disabledControl{.isControl = true};
  constexpr TouchReactions disabledGesture{.hasGestureRecognizers = true};
  for (const auto& [reactions, isElement, isInteractive] :
       {Case{control, false, true}, Case{disabledControl, true, false}, Case{gesture, false, true},
        Case{disabledGesture, false, false}, Case{nothing, true, true}, Case{nothing, false, false},
        Case{{}, true, false}}) {
    auto thing = view("A");
    thing->reactions = reactions;
    thing->isElement = isElement;
    EXPECT_EQ(only(thing).isInteractive, isInteractive);
  }
}

TEST_F(ProbeViewHierarchySnapshotTest, ListsViewsOfTheSameLabelAndFrameOnce) {
  auto first = view("A");
  first->identifier = "first";
  auto second = view("A");
  second->identifier = "second";
  second->viewKind = ViewKind::button;
  EXPECT_EQ((window_->children = {first, second}, capture().size()), 1U);
  EXPECT_EQ(capture().at(0).identifier, "first");
  second->label = "B";
  EXPECT_EQ(labels(), (Names{"A", "B"}));
  second->label = "A";
  second->frame.size.width += 0.25;
  EXPECT_EQ(labels(), (Names{"A", "A"}));
}

TEST_F(ProbeViewHierarchySnapshotTest, TakesTwoAbsentLabelsForTheSame) {
  window_->children = {reactingTo(control), reactingTo(gesture)};
  EXPECT_EQ(labels(), Names{"-"});
  auto empty = view("");
  empty->hasEmptyLabel = true;
  window_->children.push_back(empty);
  EXPECT_EQ(labels(), (Names{"-", ""}));
}

TEST_F(ProbeViewHierarchySnapshotTest, TakesZeroesOfEitherSignForTheSame) {
  window_->children = {view("A", {{0, 0}, {10, 10}}), view("A", {{-0.0, 0}, {10, 10}})};
  EXPECT_EQ(labels(), Names{"A"});
}

TEST_F(ProbeViewHierarchySnapshotTest, WalksBelowWhatIsNotListed) {
  auto unlisted = view("");
  auto repeated = view("A");
  unlisted->children = {view("A"), repeated};
  repeated->children = {view("B")};
  window_->children = {unlisted};
  EXPECT_EQ(labels(), (Names{"A", "B"}));
}

TEST_F(ProbeViewHierarchySnapshotTest, SortsFromTopToBottomAndLeavesEqualHeightsInTheirOrder) {
  auto parent = view("parent", {{50, 20}, {10, 10}});
  parent->children = {view("child", {{0, 20}, {10, 10}}), view("above", {{0, 10}, {10, 10}})};
  window_->children = {view("below", {{0, 30}, {10, 10}}), parent,
                       view("sibling", {{0, 20}, {10, 10}})};
  EXPECT_EQ(labels(), (Names{"above", "parent", "child", "sibling", "below"}));
}

TEST_F(ProbeViewHierarchySnapshotTest, TakesTheWholeFrameAndNotWhatCanBeSeen) {
  auto thing = view("A");
  thing->whole = Rect{{-5, -6}, {70, 80}};
  EXPECT_EQ(only(thing).frame, (Rect{{-5, -6}, {70, 80}}));
}

TEST_F(ProbeViewHierarchySnapshotTest, PassesOverFramesThatAreNoNumbers) {
  window_->children = {view("A", {{0, NAN}, {10, 10}}),
                       view("B", {{0, 0}, {std::numeric_limits<double>::infinity(), 10}}),
                       view("C")};
  EXPECT_EQ(labels(), Names{"C"});
}

TEST_F(ProbeViewHierarchySnapshotTest, PassesOverMissingSubviews) {
  window_->children = {nullptr, view("A")};
  EXPECT_EQ(labels(), Names{"A"});
}

TEST_F(ProbeViewHierarchySnapshotTest, EndsInATreeThatContainsItself) {
  auto thing = view("A");
  thing->children = {thing};
  window_->children = {thing};
  EXPECT_EQ(labels(), Names{"A"});
  thing->children.clear();
}

TEST_F(ProbeViewHierarchySnapshotTest, ListsTenThousandRows) {
  for (int row = 0; row < 10'000; ++row) {
    window_->children.push_back(view("Row", {{0, row * 20.0}, {100, 20}}));
  }
  EXPECT_EQ(capture().size(), 10'000U);
}

}  // namespace
}  // namespace tarnix::tests
