#include <gtest/gtest.h>

#include <QQmlComponent>
#include <QQuickItem>

#include "tests/contract/qt6_host_world.h"
#include "tests/contract/touch.h"

/// Where each kind of Quick item that scrolls comes to rest after a swipe.
namespace tarnix::contract {
namespace {

class ItemSwipeTest : public testing::Test {
 protected:
  ~ItemSwipeTest() override { delete window_; }

  /// A window of 200 x 200 with this in it, where it names what it scrolls `scrolled`.
  void show(const QByteArray& content) {
    QQmlComponent component(&engine_);
    component.setData(R"(
      import QtQuick
      import QtQuick.Controls
      Window {
        id: window
        width: 200; height: 200; visible: true
        component Tile: Rectangle { implicitWidth: 50; implicitHeight: 50; width: 50; height: 50 }
    )" + content + "}",
                      QUrl());
    window_ = qobject_cast<QQuickWindow*>(component.create());
    ASSERT_NE(window_, nullptr) << component.errorString().toStdString();
    window_->requestActivate();
    ASSERT_TRUE(pumpUntil([&] { return window_->isExposed() && window_->isActive(); }));
    letPass(std::chrono::milliseconds(50));
  }

  /// False where nothing scrolls under `from`.
  bool swipe(platform::Point from, platform::Point to) {
    return swipeAt(world_.application(), from, to);
  }

  /// Within the time that a person waits for it.
  bool comesTo(const char* name, const char* property, double value) {
    return pumpUntil([&] { return std::abs(numberOf(name, property) - value) < 0.01; });
  }

  double numberOf(const char* name, const char* property) {
    const auto* const item = window_->findChild<QObject*>(name);
    return item == nullptr ? -1e9 : item->property(property).toReal();
  }

  QuickHostWorld world_;
  QQmlEngine engine_;
  QQuickWindow* window_ = nullptr;
};

TEST_F(ItemSwipeTest, AGridGoesDownItsRows) {
  show(R"(GridView { objectName: "it"; anchors.fill: parent; cellWidth: 50; cellHeight: 50
                     model: 100; delegate: Tile {} })");
  EXPECT_TRUE(swipe({100, 150}, {100, 40}));
  EXPECT_TRUE(comesTo("it", "contentY", 110));
}

TEST_F(ItemSwipeTest, ATableGoesBothWays) {
  show(R"(TableView { objectName: "it"; anchors.fill: parent; model: 30; delegate: Tile {}
                      columnWidthProvider: () => 500 })");
  EXPECT_TRUE(swipe({150, 150}, {90, 50}));
  EXPECT_TRUE(comesTo("it", "contentX", 60));
  EXPECT_TRUE(comesTo("it", "contentY", 100));
}

TEST_F(ItemSwipeTest, ATreeGoesDownItsRows) {
  show(R"(TreeView { objectName: "it"; anchors.fill: parent; delegate: Tile {}
                     model: ListModel {
                       Component.onCompleted: { for (let i = 0; i < 30; ++i) append({name: "a"}) }
                     } })");
  EXPECT_TRUE(swipe({20, 150}, {20, 80}));
  EXPECT_TRUE(comesTo("it", "contentY", 70));
}

TEST_F(ItemSwipeTest, AListThatLiesGoesAlongAndLetsTheRestMoveWhatIsAround) {
  show(R"(Flickable {
            objectName: "around"; anchors.fill: parent; contentHeight: 900
            ListView { objectName: "it"; width: 200; height: 50; orientation: ListView.Horizontal
                       model: 50; delegate: Tile {} } })");
  EXPECT_TRUE(swipe({150, 25}, {50, 5}));
  EXPECT_TRUE(comesTo("it", "contentX", 100));
  EXPECT_TRUE(comesTo("around", "contentY", 20));
}

TEST_F(ItemSwipeTest, ATextInAScrollViewScrolls) {
  show(R"(ScrollView { id: around; anchors.fill: parent; contentItem.objectName: "it"
                       TextArea { text: Array(60).fill("line").join("\n") } })");
  EXPECT_TRUE(swipe({100, 150}, {100, 50}));
  EXPECT_TRUE(comesTo("it", "contentY", 100));
}

TEST_F(ItemSwipeTest, ItemsOnAPathFollowTheFinger) {
  show(R"(PathView { objectName: "it"; anchors.fill: parent; model: 10; pathItemCount: 4
                     delegate: Tile {}
                     path: Path { startX: 0; startY: 100; PathLine { x: 200; y: 100 } } })");
  // A quarter of the path is the length of one item.
  EXPECT_TRUE(swipe({50, 100}, {100, 100}));
  EXPECT_TRUE(comesTo("it", "offset", 1));
  EXPECT_TRUE(swipe({150, 100}, {50, 100}));
  EXPECT_TRUE(comesTo("it", "offset", 9));
  EXPECT_TRUE(swipe({100, 100}, {100, 20}));
  letPass(std::chrono::milliseconds(300));
  EXPECT_TRUE(comesTo("it", "offset", 9));
}

TEST_F(ItemSwipeTest, AWheelOfATumblerStopsAtAnItem) {
  show(R"(Tumbler { objectName: "it"; width: 100; height: 200; visibleItemCount: 4; model: 20 })");
  // Half a row more than one.
  EXPECT_TRUE(swipe({50, 150}, {50, 80}));
  EXPECT_TRUE(comesTo("it", "currentIndex", 1));
}

TEST_F(ItemSwipeTest, WhatTakesNoFingersDoesNotScroll) {
  show(R"(ListView { anchors.fill: parent; interactive: false; model: 50; delegate: Tile {} }
          PathView { width: 200; height: 50; interactive: false; model: 10; delegate: Tile {}
                     path: Path { PathLine { x: 200; y: 0 } } })");
  EXPECT_FALSE(swipe({100, 150}, {100, 50}));
  EXPECT_FALSE(swipe({100, 25}, {50, 25}));
}

}  // namespace
}  // namespace tarnix::contract
