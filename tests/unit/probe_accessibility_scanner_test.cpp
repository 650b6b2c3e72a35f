#include "probe/inspect/probe_accessibility_scanner.h"

#include <chrono>

#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

namespace traits = platform::accessibility_traits;
using fakes::FakeAccessibilityItem;
using fakes::FakeView;
using fakes::FakeWindow;
using ProbeAccessibilityScanner::Element;
using ProbeAccessibilityScanner::scanAll;
using Labels = std::vector<std::string>;
using platform::Rect;

template <class Item>
std::shared_ptr<Item> labelled(std::string label, Rect frame = {{0, 0}, {10, 10}}) {
  auto item = std::make_shared<Item>();
  item->isElement = true;
  item->label = std::move(label);
  item->frame = frame;
  return item;
}

std::shared_ptr<FakeView> view(std::string label, Rect frame = {{0, 0}, {10, 10}}) {
  return labelled<FakeView>(std::move(label), frame);
}
std::shared_ptr<FakeAccessibilityItem> item(std::string label, Rect frame = {{0, 0}, {10, 10}}) {
  return labelled<FakeAccessibilityItem>(std::move(label), frame);
}

Labels labelsOf(const std::vector<Element>& elements) {
  Labels labels;
  for (const Element& element : elements) {
    labels.push_back(element.label);
  }
  return labels;
}

class ProbeAccessibilityScannerTest : public FakeWorldTest {
 protected:
  Labels scan() { return labelsOf(scanAll()); }

  std::shared_ptr<FakeWindow> window_ = world_.application.addKeyWindow();
};

TEST_F(ProbeAccessibilityScannerTest, FindsNothingWithoutAKeyWindow) {
  window_->children = {view("A")};
  EXPECT_EQ(scan(), Labels{"A"});
  window_->key = false;
  EXPECT_EQ(scan(), Labels{});
  world_.application.scenes.clear();
  EXPECT_EQ(scan(), Labels{});
}

TEST_F(ProbeAccessibilityScannerTest, LooksForTheKeyWindowInEveryScene) {
  window_->key = false;
  auto second = world_.application.addKeyWindow();
  second->children = {view("B")};
  EXPECT_EQ(scan(), Labels{"B"});
}

TEST_F(ProbeAccessibilityScannerTest, PassesOverTheProbesOwnWindows) {
  window_->children = {view("overlay")};
  for (const char* name : {"ProbeOverlayWindow", "TarnixWindow", "app.TarnixWindow"}) {
    window_->name = name;
    EXPECT_EQ(scan(), Labels{}) << name;
  }
  world_.application.addKeyWindow()->children = {view("host")};
  EXPECT_EQ(scan(), Labels{"host"});
}

TEST_F(ProbeAccessibilityScannerTest, RecordsTheWindowItself) {
  window_->isElement = true;
  window_->label = "Main";
  window_->frame = {{0, 0}, {100, 100}};
  EXPECT_EQ(scan(), Labels{"Main"});
}

TEST_F(ProbeAccessibilityScannerTest, TakesWhatAnElementSays) {
  auto field = view("Search", {{16.7, 402.2}, {75.5, 41}});
  field->traits = traits::searchField | traits::selected;
  field->value = "cats";
  window_->children = {field};
  Element expected;
  expected.label = "Search";
  expected.type = "SearchField";
  expected.frame = {{16.7, 402.2}, {75.5, 41}};
  expected.value = "cats";
  expected.traits = traits::searchField | traits::selected;
  expected.isTextField = true;
  EXPECT_EQ(scanAll(), std::vector{expected});
}

TEST_F(ProbeAccessibilityScannerTest, RecordsOnlyLabelledElementsOfSomeSize) {
  auto notAnElement = view("not an element");
  notAnElement->isElement = false;
  window_->children = {notAnElement,
                       view(""),
                       view("no width", {{0, 0}, {0, 10}}),
                       view("no height", {{0, 0}, {10, 0}}),
                       view("negative", {{0, 0}, {-1, 10}}),
                       view("kept", {{0, 0}, {0.1, 0.1}})};
  EXPECT_EQ(scan(), Labels{"kept"});
}

TEST_F(ProbeAccessibilityScannerTest, NamesTheKindAfterTheFirstTrait) {
  const std::vector<std::pair<platform::AccessibilityTraits, const char*>> inOrder = {
      {traits::button, "Button"},     {traits::link, "Link"},
      {traits::image, "Image"},       {traits::searchField, "SearchField"},
      {traits::header, "Header"},     {traits::staticText, "StaticText"},
      {traits::adjustable, "Slider"}, {traits::tabBar, "TabBar"},
  };
  for (std::size_t first = 0; first < inOrder.size(); ++first) {
    auto only = view("x");
    only->traits = traits::selected | traits::notEnabled;
    for (std::size_t later = first; later < inOrder.size(); ++later) {
      only->traits |= inOrder[later].first;
    }
    window_->children = {only};
    const std::vector<Element> elements = scanAll();
    ASSERT_EQ(elements.size(), 1U);
    EXPECT_EQ(elements[0].type, inOrder[first].second);
    EXPECT_EQ(elements[0].isButton, first == 0);
    EXPECT_EQ(elements[0].isTextField, first <= 3);
  }
  auto plain = view("x");
  plain->traits = traits::selected;
  window_->children = {plain};
  EXPECT_EQ(scanAll()[0].type, "Other");
}

TEST_F(ProbeAccessibilityScannerTest, KnowsTextFieldsByTheirViewToo) {
  auto field = view("Name");
  field->textField = true;
  auto plain = view("Plain", {{0, 20}, {1, 1}});
  window_->children = {
      field,
      plain,
  };
  const std::vector<Element> elements = scanAll();
  ASSERT_EQ(elements.size(), 2U);
  EXPECT_TRUE(elements[0].isTextField);
  EXPECT_EQ(elements[0].type, "Other");
  EXPECT_FALSE(elements[1].isTextField);
}

TEST_F(ProbeAccessibilityScannerTest, WalksDeclaredThenSubviewsThenCounted) {
  auto parent = view("parent");
  parent->declaredChildren = {{item("declared 1"), item("declared 2")}};
  parent->children = {view("subview 1"), view("subview 2")};
  parent->countedChildren = {{item("counted 1"), nullptr, item("counted 2")}};
  window_->children = {parent, view("sibling")};
  EXPECT_EQ(scan(), (Labels{"parent", "declared 1", "declared 2", "subview 1", "subview 2",
                            "counted 1", "counted 2", "sibling"}));
}

TEST_F(ProbeAccessibilityScannerTest, WalksItemsThatAreNoViews) {
  auto row = item("row");
  row->declaredChildren = {{item("cell"), nullptr}};
  row->countedChildren = {{item("button")}};
  window_->countedChildren = {{row}};
  EXPECT_EQ(scan(), (Labels{"row", "cell", "button"}));
}

TEST_F(ProbeAccessibilityScannerTest, HearsAHiddenViewButNotWhatLiesInIt) {
  for (const bool byAlpha : {false, true}) {
    auto hidden = view("hidden");
    hidden->hidden = !byAlpha;
    hidden->opacity = byAlpha ? 0.009 : 1;
    hidden->declaredChildren = {{item("declared")}};
    hidden->children = {view("subview")};
    hidden->countedChildren = {{item("counted")}};
    window_->children = {hidden};
    EXPECT_EQ(scan(), (Labels{"hidden", "declared"}));
  }
}

TEST_F(ProbeAccessibilityScannerTest, SeesWhatIsBarelyVisible) {
  auto faint = view("faint");
  faint->opacity = 0.01;
  faint->children = {view("inside")};
  window_->children = {faint};
  EXPECT_EQ(scan(), (Labels{"faint", "inside"}));
}

TEST_F(ProbeAccessibilityScannerTest, KeepsTheProbesOwnViewsOut) {
  auto orb = view("orb");
  orb->name = "ProbeOrb";
  orb->declaredChildren = {{item("declared")}};
  orb->children = {view("subview")};
  orb->countedChildren = {{item("counted")}};
  window_->children = {orb, view("host")};
  EXPECT_EQ(scan(), (Labels{"declared", "host"}));
}

TEST_F(ProbeAccessibilityScannerTest, KeepsTheFirstOfThoseWithOneLabelAndOrigin) {
  auto first = view("OK", {{16.2, 402.2}, {10, 10}});
  auto again = view("OK", {{16.7, 402.9}, {99, 99}});
  window_->children = {first, again};
  const std::vector<Element> elements = scanAll();
  ASSERT_EQ(elements.size(), 1U);
  EXPECT_EQ(elements[0].frame, first->frame);
}

TEST_F(ProbeAccessibilityScannerTest, TellsApartByLabelAndByOrigin) {
  window_->children = {view("OK", {{16, 1}, {1, 1}}), view("Cancel", {{16, 1}, {1, 1}}),
                       view("OK", {{17, 1}, {1, 1}}), view("OK", {{16, 2}, {1, 1}}),
                       view("OK", {{-16, 1}, {1, 1}})};
  EXPECT_EQ(scan(), (Labels{"OK", "Cancel", "OK", "OK", "OK"}));
}

TEST_F(ProbeAccessibilityScannerTest, TruncatesOriginsTowardZero) {
  window_->children = {view("OK", {{-0.9, 0.9}, {1, 1}}), view("OK", {{0.9, -0.9}, {1, 1}})};
  EXPECT_EQ(scan(), Labels{"OK"});
}

TEST_F(ProbeAccessibilityScannerTest, MeetsDeclaredAndCountedChildrenOnce) {
  auto shared = item("row");
  window_->declaredChildren = {{shared}};
  window_->countedChildren = {{shared}};
  EXPECT_EQ(scan(), Labels{"row"});
}

TEST_F(ProbeAccessibilityScannerTest, SortsFromTopToBottomAndElseKeepsTheOrder) {
  window_->children = {view("low", {{0, 30}, {1, 1}}), view("right", {{90, 10}, {1, 1}}),
                       view("left", {{0, 10}, {1, 1}}), view("higher", {{50, 9.9}, {1, 1}}),
                       view("above", {{0, -5}, {1, 1}})};
  EXPECT_EQ(scan(), (Labels{"above", "higher", "right", "left", "low"}));
}

TEST_F(ProbeAccessibilityScannerTest, DropsRepetitionsBeforeItSorts) {
  window_->children = {view("OK", {{1, 5.9}, {1, 1}}), view("middle", {{1, 5.5}, {1, 1}}),
                       view("OK", {{1, 5.1}, {1, 1}})};
  EXPECT_EQ(scan(), (Labels{"middle", "OK"}));
}

TEST_F(ProbeAccessibilityScannerTest, TakesCoordinatesBeyondWhatIntegersHold) {
  window_->children = {view("far", {{1e300, 1e300}, {1, 1}}), view("far", {{2e300, 2e300}, {1, 1}}),
                       view("near", {{0, 0}, {1, 1}})};
  EXPECT_EQ(scan(), (Labels{"near", "far"}));
}

TEST_F(ProbeAccessibilityScannerTest, FindsLabelsWholeOrInPart) {
  window_->children = {view("Save"), view("Save draft"), view("SAVE", {{0, 20}, {1, 1}}),
                       view("Open")};
  using ProbeAccessibilityScanner::find;
  EXPECT_EQ(labelsOf(find("save", true)), (Labels{"Save", "SAVE"}));
  EXPECT_EQ(labelsOf(find("save", false)), (Labels{"Save", "Save draft", "SAVE"}));
  EXPECT_EQ(labelsOf(find("SAVE", false)), (Labels{"Save", "Save draft", "SAVE"}));
  EXPECT_EQ(labelsOf(find(" save", false)), Labels{}) << "nothing is trimmed";
  EXPECT_EQ(labelsOf(find("", false)), (Labels{"Save", "Save draft", "Open", "SAVE"}));
  EXPECT_EQ(labelsOf(find("", true)), Labels{});
}

TEST_F(ProbeAccessibilityScannerTest, FindsInAnyScript) {
  window_->children = {view("\xc3\x9c"
                            "bersicht"),
                       view("\xd0\x9f\xd1\x80\xd0\xb8")};
  using ProbeAccessibilityScanner::find;
  EXPECT_EQ(labelsOf(find("\xc3\xbc"
                          "BERSICHT",
                          true)),
            Labels{"\xc3\x9c"
                   "bersicht"});
  EXPECT_EQ(labelsOf(find("\xd0\xbf\xd1\x80", false)), Labels{"\xd0\x9f\xd1\x80\xd0\xb8"});
}

TEST_F(ProbeAccessibilityScannerTest, WritesALineOfTextForEachElement) {
  const auto valued = [](std::string label, std::optional<std::string> value) {
    auto result = view(std::move(label));
    result->value = std::move(value);
    return result;
  };
  window_->children = {valued("Volume", "50%"), valued("Volume 2", "Volume 2"), valued("Empty", ""),
                       valued("None", std::nullopt)};
  EXPECT_EQ(ProbeAccessibilityScanner::allVisibleText(),
            (Labels{"Volume: 50%", "Volume 2", "Empty", "None"}));
}

TEST_F(ProbeAccessibilityScannerTest, GoesTenThousandDeep) {
  std::shared_ptr<FakeView> inner = view("innermost", {{0, 1}, {1, 1}});
  for (int depth = 0; depth < 10'000; ++depth) {
    auto outer = std::make_shared<FakeView>();
    outer->children = {std::move(inner)};
    inner = std::move(outer);
  }
  window_->children = {inner, view("after", {{0, 2}, {1, 1}})};
  EXPECT_EQ(scan(), (Labels{"innermost", "after"}));
  // Taken apart from the outside, since the fake's own destruction recurses.
  window_->children.clear();
  while (!inner->children.empty()) {
    inner = std::static_pointer_cast<FakeView>(std::shared_ptr(inner->children[0]));
  }
}

TEST_F(ProbeAccessibilityScannerTest, ComesToAnEndInATreeThatContainsItself) {
  auto loop = view("loop");
  loop->declaredChildren = {{loop, item("beside")}};
  window_->children = {loop};
  EXPECT_EQ(scan(), (Labels{"loop", "beside"}));
  loop->declaredChildren.reset();
}

TEST_F(ProbeAccessibilityScannerTest, KeepsTenThousandElements) {
  for (int row = 0; row < 10'000; ++row) {
    window_->children.push_back(view("row " + std::to_string(row), {{0, row * 20.0}, {10, 10}}));
  }
  std::reverse(window_->children.begin(), window_->children.end());
  const std::vector<Element> elements = scanAll();
  ASSERT_EQ(elements.size(), 10'000U);
  EXPECT_EQ(elements.front().label, "row 0");
  EXPECT_EQ(elements.back().label, "row 9999");
}

}  // namespace
}  // namespace tarnix::tests
