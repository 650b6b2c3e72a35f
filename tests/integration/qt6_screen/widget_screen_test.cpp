#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/integration/qt6_screen/screen_table.h"

namespace tarnix::integration {
namespace {

using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::UnorderedElementsAre;
using testing::UnorderedElementsAreArray;

TEST(WidgetScreen, EveryControlSaysWhatAPersonSees) {
  const ShownWidgetPage shown("controls");
  EXPECT_THAT(screenLines(), UnorderedElementsAreArray({
                                 "Button File",
                                 "Button Bits & pieces",
                                 "Button Undo",
                                 "Button Redo disabled",
                                 // A dock's title bar shows the mark.
                                 "Header &Docked",
                                 "Button Float",
                                 "Button Close",
                                 "StaticText In the dock",
                                 "Button Push",
                                 "Button Pressed in selected",
                                 "Button Disabled disabled",
                                 "Button Find a word",
                                 "Button Command link {Leads elsewhere}",
                                 "Button Check box {1}",
                                 "Button Partial {mixed}",
                                 "Button Radio button {0}",
                                 "Header Group title",
                                 "StaticText In the group",
                                 "Button Checkable group {0}",
                                 "StaticText Switched off disabled",
                                 "StaticText Name",
                                 "Other Name {Ada} field",
                                 "Other Street {} field",
                                 "StaticText Password",
                                 "Other Password {●●●●●●} field",
                                 "Other Notes {bold note} field",
                                 "StaticText Remarks",
                                 "Other Remarks {plain text} field",
                                 "StaticText Colour",
                                 "Button Colour {Red}",
                                 "Button Editable {Oak} field",
                                 "StaticText Weight",
                                 "Slider Weight {7 kg} field",
                                 "StaticText Day",
                                 "Slider Day {29 Feb 2024} field",
                                 "Slider Volume {25}",
                                 "Slider Balance {0}",
                                 "Other 30% {30%}",
                                 "StaticText 12 {12}",
                                 "StaticText Plain label & more",
                                 "StaticText Some rich text",
                                 "Link A link",
                                 "Image Picture",
                                 "Other Fuel gauge",
                                 "StaticText Ready.",
                             }));
}

TEST(WidgetScreen, AFieldWithoutANameTakesTheLabelBesideIt) {
  const ShownWidgetPage shown("labels");
  EXPECT_THAT(screenLines(), IsSupersetOf({
                                 "Slider Width: {0} field",
                                 "Button Style: {Bold}",
                                 "Other Address {First line second line} field",
                                 "Other Of the next {} field",
                                 "Other alone {alone} field",
                                 "Other שם {} field",
                             }));
}

TEST(WidgetScreen, ACheckBoxIsWhereItReacts) {
  const ShownWidgetPage shown("controls");
  const auto box = elementsLabelled("Check box");
  const auto button = elementsLabelled("Push");
  ASSERT_EQ(box.size(), 1U);
  ASSERT_EQ(button.size(), 1U);
  EXPECT_LT(box.front().frame.size.width, button.front().frame.size.width);
}

TEST(WidgetScreen, ListsSayTheRowsThatTheyShow) {
  const ShownWidgetPage shown("views");
  const auto rows = linesWith("Row ");
  // A list of a thousand, of which some fit, and forty icons.
  EXPECT_GT(rows.size(), 40U + 5);
  EXPECT_LT(rows.size(), 40U + 60);
  EXPECT_EQ(linesWith("Row 1 selected").size(), 2U);
  EXPECT_EQ(linesWith("Other Row 39").size(), 1U);
  EXPECT_THAT(linesWith("column"), ElementsAre("Other In a column"));
}

TEST(WidgetScreen, TablesSayCellsAndTitlesInTheOrderShown) {
  const ShownWidgetPage shown("views");
  EXPECT_THAT(linesWith("Header"),
              IsSupersetOf({"Header Number", "Header Square", "Header 1", "Header 3"}));
  EXPECT_EQ(linesWith("never seen").size(), 0U);
  EXPECT_EQ(linesWith("Hidden").size(), 0U);
  EXPECT_EQ(linesWith("Button 0 {1}").size(), 1U);
  const auto third = elementsLabelled("3");
  const auto first = elementsLabelled("1");
  ASSERT_FALSE(third.empty());
  ASSERT_FALSE(first.empty());
  // The rows were swapped.
  EXPECT_EQ(third.front().type, "Header");
  EXPECT_LT(third.front().frame.minY(), first.back().frame.minY());
}

TEST(WidgetScreen, TreesSayWhatIsUnfolded) {
  const ShownWidgetPage shown("views");
  EXPECT_EQ(linesWith("Folder").size(), 5U);
  EXPECT_THAT(linesWith("File"),
              UnorderedElementsAre("Other File 1.0", "Other File 1.1", "Other File 1.2"));
  EXPECT_EQ(linesWith("1 KB").size(), 3U);
}

TEST(WidgetScreen, WhatScrollsAsAWholeIsThereAsAWhole) {
  const ShownWidgetPage shown("views");
  EXPECT_EQ(linesWith("Scrolled").size(), 30U);
}

TEST(WidgetScreen, OfPagesTheCurrentOneIsThere) {
  const ShownWidgetPage shown("containers");
  EXPECT_THAT(screenLines(),
              UnorderedElementsAre("Button First selected", "Button Second",
                                   "Button Third disabled", "StaticText On the first page",
                                   "StaticText Stacked above", "Button Open drawer",
                                   "StaticText In the open drawer", "Button Closed drawer",
                                   // The lower of two windows shows no more than an edge.
                                   "Header Document [*]*", "Button System menu", "Button Minimize",
                                   "Button Maximize", "Button Close", "StaticText Upper"));
}

TEST(WidgetScreen, OpenMenusAreReadInFrontOfTheWindow) {
  const ShownWidgetPage shown("menu");
  EXPECT_THAT(screenLines(),
              UnorderedElementsAre("Button File", "Button Bits & pieces", "Button In the window",
                                   "Button Open...", "Button Save disabled",
                                   "Button Wrap lines {1}", "Button Recent", "Button letter.txt"));
  const auto entry = elementsLabelled("Open...");
  ASSERT_EQ(entry.size(), 1U);
  // The menu was opened at (20, 40) of the window.
  EXPECT_GE(entry.front().frame.minX(), 20);
  EXPECT_LT(entry.front().frame.minX(), 25);
  EXPECT_GE(entry.front().frame.minY(), 40);
  EXPECT_LT(entry.front().frame.minY(), 45);
}

TEST(WidgetScreen, MenusThatDoNotFitIntoTheirBarAreNotThere) {
  const ShownWidgetPage shown("narrow menu bar");
  EXPECT_THAT(screenLines(), ElementsAre("Button File"));
}

TEST(WidgetScreen, AnOpenListHidesItsBox) {
  const ShownWidgetPage shown("combo");
  EXPECT_THAT(screenLines(),
              UnorderedElementsAre("Other Apple selected", "Other Banana", "Other Cherry"));
}

TEST(WidgetScreen, ADialogIsTheScreen) {
  const ShownWidgetPage shown("dialog");
  EXPECT_THAT(screenLines(), ElementsAre("Button In the dialog"));
}

TEST(WidgetScreen, ScenesInsideWidgetsAreReadWhereTheyStand) {
  const ShownWidgetPage shown("quick");
  const auto texts = elementsLabelled("In the scene");
  const auto label = elementsLabelled("A widget");
  ASSERT_EQ(texts.size(), 2U);
  ASSERT_EQ(label.size(), 1U);
  const platform::Rect& first = texts.front().frame;
  const platform::Rect& second = texts.back().frame;
  EXPECT_GT(first.minX(), label.front().frame.minX() + label.front().frame.size.width + 20);
  EXPECT_GT(second.minX(), first.minX() + 200);
  EXPECT_EQ(first.minY(), label.front().frame.minY() + 30);
  EXPECT_EQ(second.minY(), first.minY());
}

TEST(WidgetScreen, TenThousandLabels) {
  const ShownWidgetPage shown("many");
  EXPECT_EQ(screenLines().size(), 10'000U);
}

}  // namespace
}  // namespace tarnix::integration
