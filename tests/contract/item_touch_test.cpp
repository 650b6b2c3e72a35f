#include <gtest/gtest.h>

#include <QQmlComponent>
#include <QQuickItem>

#include "tests/contract/qt6_host_world.h"
#include "tests/contract/touch.h"

/// What a touch reaches among Quick items. Each test says what reacts, taps, and sees whether it
/// was that which the toolkit handed the press to.
namespace tarnix::contract {
namespace {

class ItemTouchTest : public testing::Test {
 protected:
  ~ItemTouchTest() override { delete window_; }

  /// A window of 400 x 300 with this in it. An `Area` tells its name and where it was clicked.
  void show(const std::string& content) {
    QQmlComponent component(&engine_);
    component.setData(QByteArray(R"(
      import QtQuick
      import QtQuick.Controls
      Window {
        id: window
        width: 400; height: 300; visible: true
        property var deeds: []
        function did(what) { deeds.push(what) }
        component Area: MouseArea {
          width: 100; height: 100
          onClicked: (mouse) =>
            window.did(objectName + " " + Math.round(mouse.x) + "," + Math.round(mouse.y))
        }
        component Handled: Rectangle {
          width: 100; height: 100
          TapHandler { onTapped: window.did(parent.objectName) }
        }
    )") + QByteArray::fromStdString(content) +
                          "}",
                      QUrl());
    window_ = qobject_cast<QQuickWindow*>(component.create());
    ASSERT_NE(window_, nullptr) << component.errorString().toStdString();
    window_->requestActivate();
    ASSERT_TRUE(pumpUntil([&] { return window_->isExposed() && window_->isActive(); }));
  }

  /// What was said to react, after what did.
  std::string tap(double x, double y) {
    window_->setProperty("deeds", QVariantList());
    const std::string said = tapAt(world_.application(), {x, y});
    QCoreApplication::processEvents();
    const std::string did =
        window_->property("deeds").value<QVariant>().toStringList().join(", ").toStdString();
    return (did.empty() ? "-" : did) + " as " + said;
  }

  std::string touched(double x, double y) { return touchedAt(world_.application(), {x, y}); }

  QQuickItem& item(const char* name) { return *window_->findChild<QQuickItem*>(name); }

  QuickHostWorld world_;
  QQmlEngine engine_;
  QQuickWindow* window_ = nullptr;
};

TEST_F(ItemTouchTest, ReachesWhatIsInFront) {
  show(R"(
    Area { objectName: "first" }
    Area { objectName: "second"; x: 50 }
    Area { objectName: "raised"; x: 100; z: 1 }
    Area { objectName: "last"; x: 150 })");
  EXPECT_EQ(tap(25, 50), "first 25,50 as first");
  EXPECT_EQ(tap(75, 50), "second 25,50 as second");
  EXPECT_EQ(tap(175, 50), "raised 75,50 as raised");
  EXPECT_EQ(tap(225, 50), "last 75,50 as last");
  item("first").setZ(2);
  EXPECT_EQ(tap(75, 50), "first 75,50 as first");
  EXPECT_EQ(touched(400, 10), "-");
}

TEST_F(ItemTouchTest, AChildBehindItsParentIsBehind) {
  show(R"(
    Area {
      objectName: "parent"
      Area { objectName: "child"; x: 50; z: -1 }
    })");
  EXPECT_EQ(tap(75, 50), "parent 75,50 as parent");
  EXPECT_EQ(tap(125, 50), "child 75,50 as child");
}

TEST_F(ItemTouchTest, ReachesWhatSticksOutUnlessItIsCutOff) {
  show(R"(
    Area { objectName: "behind"; width: 400 }
    Item {
      objectName: "holder"; width: 50; height: 100
      Area { objectName: "inner" }
    })");
  EXPECT_EQ(tap(75, 50), "inner 75,50 as inner");
  item("holder").setClip(true);
  EXPECT_EQ(tap(25, 50), "inner 25,50 as inner");
  EXPECT_EQ(tap(75, 50), "behind 75,50 as behind");
}

TEST_F(ItemTouchTest, FollowsTransforms) {
  show(R"(
    Area { objectName: "turned"; x: 0; width: 100; height: 40; y: 30; rotation: 90 }
    Area { objectName: "halved"; x: 100; scale: 0.5 }
    Area { objectName: "flipped"; x: 200; transform: Scale { xScale: -1; origin.x: 50 } }
    Item {
      x: 350; y: 50; rotation: 45; scale: 2
      Item { rotation: -90; Area { objectName: "nested"; x: -10; y: -10; width: 20; height: 20 } }
    })");
  EXPECT_EQ(tap(50, 90), "turned 90,20 as turned");
  EXPECT_EQ(tap(10, 50), "- as -");
  EXPECT_EQ(tap(170, 50), "halved 90,50 as halved");
  EXPECT_EQ(tap(110, 50), "- as -");
  EXPECT_EQ(tap(210, 50), "flipped 90,50 as flipped");
  // A square on its corner.
  EXPECT_EQ(tap(350, 50), "nested 10,10 as nested");
  EXPECT_EQ(tap(350, 74), "nested 2,18 as nested");
  EXPECT_EQ(tap(333, 33), "- as -");
}

TEST_F(ItemTouchTest, PassesThroughWhatIsHiddenDisabledOrForOtherButtons) {
  show(R"(
    Area { objectName: "behind"; width: 400 }
    Area { objectName: "hidden"; visible: false }
    Area { objectName: "disabled"; enabled: false }
    Area { objectName: "right"; acceptedButtons: Qt.RightButton; hoverEnabled: true }
    Button { objectName: "button"; x: 100; width: 100; height: 100; enabled: false }
    Item { x: 200; enabled: false; Area { objectName: "inner" } })");
  EXPECT_EQ(tap(50, 50), "behind 50,50 as behind");
  EXPECT_EQ(tap(150, 50), "behind 150,50 as behind");
  EXPECT_EQ(tap(250, 50), "behind 250,50 as behind");
}

TEST_F(ItemTouchTest, WhatCannotBeSeenThroughStillTakesTouches) {
  show(R"(
    Area { objectName: "behind" }
    Area { objectName: "clear"; opacity: 0 })");
  EXPECT_EQ(tap(50, 50), "clear 50,50 as clear");
}

TEST_F(ItemTouchTest, FollowsContainmentMasks) {
  show(R"(
    Area { objectName: "behind" }
    Area {
      objectName: "masked"
      containmentMask: QtObject { function contains(point: point) : bool { return point.x > 50 && point.x < 100 } }
    }
    Button {
      objectName: "round"; x: 100; width: 100; height: 100; onClicked: window.did("round")
      containmentMask: Item { x: 40; y: 40; width: 20; height: 20 }
    })");
  EXPECT_EQ(tap(25, 50), "behind 25,50 as behind");
  EXPECT_EQ(tap(75, 50), "masked 75,50 as masked");
  EXPECT_EQ(tap(150, 50), "round as round");
  EXPECT_EQ(tap(110, 50), "- as -");
}

TEST_F(ItemTouchTest, HandlersTakeTouchesOnWhatIsDrawnInFront) {
  show(R"(
    Handled {
      objectName: "handled"
      Text { text: "in front"; anchors.fill: parent }
      Handled { objectName: "inner"; width: 50; height: 50 }
    }
    Handled { objectName: "off"; x: 100; enabled: false }
    Handled { objectName: "rotated"; x: 200; width: 100; height: 40; y: 30; rotation: 90 })");
  EXPECT_EQ(tap(75, 75), "handled as handled");
  EXPECT_EQ(tap(150, 50), "- as -");
  EXPECT_EQ(tap(250, 90), "rotated as rotated");
  EXPECT_EQ(tap(210, 50), "- as -");
  // Both look on, as the toolkit lets them: the inner one is in front.
  EXPECT_EQ(tap(25, 25), "inner, handled as inner");
}

TEST_F(ItemTouchTest, WhatOnlyLooksOnReactsWhereNothingElseDoes) {
  show(R"(
    Area { objectName: "area" }
    Rectangle { objectName: "ground"; x: 150; width: 50; height: 50 }
    Item {
      objectName: "lens"; anchors.fill: parent
      PointHandler { onActiveChanged: if (active) window.did("seen") }
    })");
  EXPECT_EQ(tap(50, 50), "seen, area 50,50 as area");
  EXPECT_EQ(tap(175, 25), "seen as lens");
}

TEST_F(ItemTouchTest, APopupComesBeforeAllElse) {
  show(R"(
    Area { objectName: "behind"; width: 400; height: 300 }
    Popup {
      id: popup; objectName: "popup"; x: 100; y: 100; width: 100; height: 100; modal: true
      padding: 0; visible: true
      Area { objectName: "inside"; x: 50; width: 50 }
    }
    Menu {
      id: menu; x: 200; y: 0; visible: false
      MenuItem { objectName: "entry"; text: "Entry"; onTriggered: window.did("entry") }
    })");
  ASSERT_TRUE(pumpUntil([&] { return touched(175, 150) == "inside"; }));
  EXPECT_EQ(tap(175, 150), "inside 25,50 as inside");
  EXPECT_EQ(tap(125, 150), "- as -") << "the popup itself";
  EXPECT_EQ(tap(20, 20), "- as Overlay") << "closes the popup";
  ASSERT_TRUE(pumpUntil([&] { return touched(175, 150) == "behind"; }));
  EXPECT_EQ(tap(20, 20), "behind 20,20 as behind");
}

TEST_F(ItemTouchTest, PeopleAreToldTheNamesThatTheyKnow) {
  show(R"(
    MouseArea { width: 100; height: 100; onClicked: window.did("plain") }
    MouseArea { property int extra; x: 100; width: 100; height: 100; onClicked: window.did("own") }
    Area { x: 200 })");
  EXPECT_EQ(tap(50, 50), "plain as MouseArea");
  EXPECT_EQ(tap(150, 50), "own as MouseArea");
  EXPECT_EQ(tap(250, 50), " 50,50 as Area");
  EXPECT_EQ(touched(50, 250), "RootItem");
}

TEST_F(ItemTouchTest, AnItemThatGoesWithItsTouchDoesNoHarm) {
  show(R"(
    Loader {
      id: loader; objectName: "loader"; width: 100; height: 100
      sourceComponent: MouseArea { objectName: "going"; onPressed: loader.active = false }
    })");
  ASSERT_EQ(touched(50, 50), "going");
  EXPECT_EQ(tapAt(world_.application(), {50, 50}), "going");
  ASSERT_TRUE(pumpUntil([&] { return touched(50, 50) != "going"; }));
}

}  // namespace
}  // namespace tarnix::contract
