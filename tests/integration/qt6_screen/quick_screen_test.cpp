#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/contract/qt6_host_world.h"
#include "tests/integration/qt6_screen/screen_table.h"

namespace tarnix::integration {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::Not;
using testing::UnorderedElementsAre;
using testing::UnorderedElementsAreArray;

/// "Row 0", "Row 1" and so on.
std::vector<std::string> numbered(const std::string& prefix, int count) {
  std::vector<std::string> result;
  for (int index = 0; index < count; ++index) {
    result.push_back(prefix + std::to_string(index));
  }
  return result;
}

platform::Rect frameOf(const std::string& label) {
  const auto elements = elementsLabelled(label);
  EXPECT_EQ(elements.size(), 1U) << label;
  return elements.empty() ? platform::Rect() : elements.front().frame;
}

TEST(QuickScreen, AControlWithoutANameTakesWhatStandsBesideItOrOnIt) {
  const ShownQmlFile shown("labels.qml");
  EXPECT_THAT(screenLines(), UnorderedElementsAreArray({
                                 "StaticText Width:",
                                 "Slider Width: {3}",
                                 "StaticText Address",
                                 "Other Address {First line second line} field",
                                 "Button go previous 24",
                                 "Button document open",
                                 "Button Take a copy",
                                 "Button Rich check {0}",
                                 "Button Rich button",
                                 "Button 1 < 2",
                             }));
}

TEST(QuickScreen, EveryControlSaysWhatAPersonSees) {
  const ShownQmlFile shown("controls.qml");
  EXPECT_THAT(screenLines(), UnorderedElementsAreArray({
                                 "Button File",
                                 "Button View",
                                 "Button Back",
                                 "Button Search the list",
                                 "Header Heading",
                                 "Button Save",
                                 "Button Salt & pepper",
                                 "Button Disabled disabled",
                                 "Button Pressed in selected",
                                 "Button Own content",
                                 "Button +",
                                 "Button Hold me",
                                 "Button Check box {1}",
                                 "Button Tristate {mixed}",
                                 "Button Radio button {0}",
                                 "Button Switch {1}",
                                 "Button Item delegate",
                                 "Button Check delegate {0}",
                                 "Button Switch delegate {0}",
                                 "StaticText Compound",
                                 "Button Inner",
                                 "Other Your name {} field",
                                 "Other Filled {some text} field",
                                 "Other Password {●●●●●●} field",
                                 "SearchField Search field {} field",
                                 "Other bare input {bare input} field",
                                 "Other Notes {bold note} field",
                                 "Button Red {Red}",
                                 "Button Colour {Blue} field",
                                 "Slider 42 {42}",
                                 "Slider Amount {7} field",
                                 "Slider Volume {0.25}",
                                 "Slider Balance {0.5}",
                                 "Slider Price {0.25 – 0.75}",
                                 "Other Loading {0.3}",
                                 "Header Group",
                                 "StaticText In the group",
                                 "StaticText Plain rich text",
                                 "StaticText 1 < 2 & 3",
                                 "Link A link",
                                 "StaticText Marked down",
                                 "StaticText Multi line",
                                 "Image Picture",
                                 "Button Own button",
                                 "StaticText In a frame",
                                 "StaticText 0",
                                 "StaticText 1",
                                 "StaticText 2",
                                 "StaticText 3",
                                 "StaticText 4",
                                 "Button First tab selected",
                                 "Button Second tab",
                             }));
}

TEST(QuickScreen, ViewsSayWhatTheyShowAndNoMore) {
  const ShownQmlFile shown("views.qml");
  EXPECT_THAT(linesWith("Row"), UnorderedElementsAreArray(numbered("Button Row ", 4)));
  EXPECT_THAT(linesWith("StaticText G"), UnorderedElementsAreArray(numbered("StaticText G", 9)));
  EXPECT_THAT(linesWith("StaticText P"), UnorderedElementsAreArray(numbered("StaticText P", 3)));
  EXPECT_THAT(linesWith("page"), ElementsAre("StaticText Swipe page 2"));
  EXPECT_THAT(linesWith("stack"), ElementsAre("StaticText Top of the stack"));
}

TEST(QuickScreen, RowsThatAViewKeepsForLaterAreNotThere) {
  const ShownQmlFile shown("views.qml");
  // The file scrolls to and fro for a third of a second, and ends at the top.
  const auto isAtTheTop = [](const char* word) {
    const auto lines = linesWith(word);
    return !lines.empty() && lines.front() == std::string("StaticText ") + word + " 0";
  };
  ASSERT_TRUE(contract::pumpUntil([&] { return isAtTheTop("Reused") && isAtTheTop("Cell"); }));
  EXPECT_THAT(linesWith("Reused"), UnorderedElementsAreArray(numbered("StaticText Reused ", 4)));
  EXPECT_THAT(linesWith("Cell"), UnorderedElementsAreArray(numbered("StaticText Cell ", 5)));
}

TEST(QuickScreen, RowsThatWereTakenAwayAreNotThere) {
  const ShownQmlFile shown("shrinking.qml");
  EXPECT_THAT(screenLines(), UnorderedElementsAre("StaticText Cell 0", "StaticText Cell 1",
                                                  "StaticText Row 0", "StaticText Row 1"));
}

TEST(QuickScreen, WhatScrollsAsAWholeIsThereAsAWhole) {
  const ShownQmlFile shown("views.qml");
  EXPECT_THAT(linesWith("Scrolled"),
              UnorderedElementsAreArray(numbered("StaticText Scrolled ", 20)));
  EXPECT_THAT(linesWith("Far"), ElementsAre("StaticText Far down"));
  EXPECT_THAT(linesWith("Inner"), UnorderedElementsAreArray(numbered("StaticText Inner ", 3)));
}

TEST(QuickScreen, FramesFollowTransforms) {
  const ShownQmlFile shown("transforms.qml");
  EXPECT_EQ(frameOf("Halved"), (platform::Rect{{60, 60}, {50, 20}}));
  EXPECT_EQ(frameOf("Upright"), (platform::Rect{{330, 70}, {40, 100}}));
  // Doubled from its left edge, then moved by 30.
  EXPECT_EQ(frameOf("Stretched"), (platform::Rect{{330, 250}, {200, 40}}));
}

TEST(QuickScreen, WhatCannotBeSeenIsNotThere) {
  const ShownQmlFile shown("transforms.qml");
  EXPECT_THAT(screenLines(),
              UnorderedElementsAre("Button Halved", "Button Upright", "Button Stretched",
                                   "StaticText Raised", "StaticText Moved", "Other Fancy"));
}

TEST(QuickScreen, AnOpenMenuIsReadWithWhatItLeavesInSight) {
  ShownQmlFile shown("popups.qml");
  shown.open("menu");
  EXPECT_THAT(screenLines(),
              UnorderedElementsAre("Button In the page", "Button Apple {Apple}", "StaticText Below",
                                   "StaticText Behind the dialog", "Button Copy",
                                   "Button Paste disabled", "Button Wrapped {1}", "Button More"));
}

TEST(QuickScreen, ADialogHidesWhatIsBehindIt) {
  ShownQmlFile shown("popups.qml");
  EXPECT_THAT(screenLines(), Contains("StaticText Behind the dialog"));
  shown.open("dialog");
  EXPECT_THAT(screenLines(),
              IsSupersetOf({"StaticText Delete?", "StaticText This cannot be undone.", "Button OK",
                            "Button Cancel", "Button In the page"}));
  EXPECT_THAT(screenLines(), Not(Contains("StaticText Behind the dialog")));
}

TEST(QuickScreen, DrawersPopupsAndListsAreRead) {
  const std::vector<std::pair<std::string, std::string>> expected = {
      {"drawer", "StaticText In the drawer"},
      {"popup", "StaticText In the popup"},
      {"combo", "Button Banana"},
  };
  for (const auto& [popup, line] : expected) {
    ShownQmlFile shown("popups.qml");
    EXPECT_THAT(screenLines(), Not(Contains(line)));
    shown.open(popup);
    EXPECT_THAT(screenLines(), Contains(line));
  }
}

}  // namespace
}  // namespace tarnix::integration
