#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QCalendarWidget>
#include <QDialog>
#include <QFrame>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWidget>
#include <QQuickWindow>
#include <QVBoxLayout>

#include "tests/contract/qt6_host_world.h"
#include "tests/contract/touch.h"

/// What a touch reaches among widgets. Each test says what reacts, taps, and sees whether it was
/// that which the toolkit handed the press to.
namespace tarnix::contract {
namespace {

/// Takes presses by itself, and tells of it.
class Board : public QWidget {
 public:
  Board(const char* name, QRect place, QWidget* parent, QStringList& deeds)
      : QWidget(parent), deeds_(deeds) {
    setObjectName(name);
    setGeometry(place);
  }

 protected:
  void mousePressEvent(QMouseEvent*) override { deeds_ << objectName(); }

 private:
  QStringList& deeds_;
};

class WidgetTouchTest : public testing::Test {
 protected:
  WidgetTouchTest() {
    window_.setObjectName("window");
    window_.resize(400, 300);
  }

  Board& board(const char* name, QRect place, QWidget* parent = nullptr) {
    return *new Board(name, place, parent == nullptr ? &window_ : parent, deeds_);
  }

  QPushButton& button(const char* name, QRect place, QWidget* parent = nullptr) {
    auto* const result = new QPushButton(name, parent == nullptr ? &window_ : parent);
    result->setObjectName(name);
    result->setGeometry(place);
    QObject::connect(result, &QPushButton::clicked, [this, name] { deeds_ << name; });
    return *result;
  }

  void show(QWidget& window) {
    window.show();
    window.activateWindow();
    ASSERT_TRUE(pumpUntil([&] { return window.isActiveWindow(); }));
    ASSERT_TRUE(pumpUntil([&] { return keyWindowOf(world_.application()) != nullptr; }));
  }
  void show() { show(window_); }

  /// What was said to react, after what did.
  std::string tap(double x, double y) {
    deeds_.clear();
    const std::string said = tapAt(world_.application(), {x, y});
    QCoreApplication::processEvents();
    const std::string did = deeds_.join(' ').toStdString();
    return (did.empty() ? "-" : did) + " as " + said;
  }

  std::string touched(double x, double y) { return touchedAt(world_.application(), {x, y}); }

  WidgetsHostWorld world_;
  QWidget window_;
  QStringList deeds_;
};

TEST_F(WidgetTouchTest, ReachesWhatIsInFront) {
  Board& first = board("first", {0, 0, 100, 100});
  board("second", {50, 0, 100, 100});
  show();
  EXPECT_EQ(tap(25, 50), "first as first");
  EXPECT_EQ(tap(75, 50), "second as second");
  first.raise();
  EXPECT_EQ(tap(75, 50), "first as first");
  EXPECT_EQ(touched(399, 299), "window");
  EXPECT_EQ(touched(400, 10), "-");
  EXPECT_EQ(touched(-1, 10), "-");
}

TEST_F(WidgetTouchTest, ReachesAChildOnlyWhereItsParentsLetItBeSeen) {
  QWidget& frame = board("frame", {50, 50, 100, 100});
  board("child", {60, 60, 200, 200}, &frame);
  show();
  EXPECT_EQ(tap(120, 120), "child as child");
  EXPECT_EQ(tap(160, 160), "- as -");
}

TEST_F(WidgetTouchTest, PassesThroughWhatIsHiddenOrLetsTouchesThrough) {
  board("behind", {0, 0, 100, 100});
  board("hidden", {0, 0, 100, 100}).hide();
  board("glass", {0, 0, 100, 100}).setAttribute(Qt::WA_TransparentForMouseEvents);
  show();
  EXPECT_EQ(tap(50, 50), "behind as behind");
}

TEST_F(WidgetTouchTest, WhatIsDisabledHandsATouchToWhatItStandsInAndToNothingBeside) {
  board("beside", {0, 0, 200, 100});
  QWidget& holder = board("holder", {0, 0, 100, 100});
  board("disabled in holder", {10, 10, 50, 30}, &holder).setEnabled(false);
  board("disabled", {110, 10, 50, 30}).setEnabled(false);
  show();
  EXPECT_EQ(tap(30, 20), "holder as holder");
  EXPECT_EQ(tap(130, 20), "- as -");
  holder.setEnabled(false);
  EXPECT_EQ(tap(30, 20), "- as -");
}

TEST_F(WidgetTouchTest, ADisabledButtonKeepsATouchToItself) {
  QWidget& holder = board("holder", {0, 0, 100, 100});
  button("disabled", {10, 10, 50, 30}, &holder).setEnabled(false);
  show();
  EXPECT_EQ(touched(30, 20), "disabled");
  EXPECT_EQ(tap(30, 20), "- as -");
}

TEST_F(WidgetTouchTest, OnlyTheDaysOfACalendarReact) {
  QCalendarWidget calendar(&window_);
  calendar.setGeometry(0, 0, 400, 300);
  calendar.setFirstDayOfWeek(Qt::Monday);
  calendar.setSelectedDate({2024, 1, 15});
  QObject::connect(&calendar, &QCalendarWidget::clicked,
                   [this](QDate day) { deeds_ << day.toString(Qt::ISODate); });
  show();
  const auto* const view = calendar.findChild<QAbstractItemView*>("qt_calendar_calendarview");
  ASSERT_NE(view, nullptr);
  const auto tapCell = [&](int row, int column) {
    const QPoint center = view->visualRect(view->model()->index(row, column)).center();
    const QPoint point = view->viewport()->mapTo(&window_, center);
    return tap(point.x(), point.y());
  };
  EXPECT_EQ(tapCell(3, 1), "2024-01-08 as QCalendarView");
  EXPECT_EQ(tapCell(0, 1), "- as -");
  EXPECT_EQ(tapCell(3, 0), "- as -");
  calendar.setHorizontalHeaderFormat(QCalendarWidget::NoHorizontalHeader);
  EXPECT_EQ(tapCell(2, 1), "2024-01-08 as QCalendarView");
}

TEST_F(WidgetTouchTest, StopsWhereAWidgetHandsNothingOn) {
  QWidget& holder = board("holder", {0, 0, 200, 100});
  QWidget through(&holder);
  through.setGeometry(0, 0, 50, 50);
  QWidget keeping(&holder);
  keeping.setGeometry(50, 0, 50, 50);
  keeping.setAttribute(Qt::WA_NoMousePropagation);
  show();
  EXPECT_EQ(tap(25, 25), "holder as holder");
  EXPECT_EQ(tap(75, 25), "- as -");
}

TEST_F(WidgetTouchTest, FollowsMasks) {
  board("behind", {0, 0, 100, 100});
  board("round", {0, 0, 100, 100}).setMask(QRegion(0, 0, 100, 100, QRegion::Ellipse));
  show();
  EXPECT_EQ(tap(50, 50), "round as round");
  EXPECT_EQ(tap(3, 3), "behind as behind");
  window_.setMask(QRegion(0, 0, 50, 300));
  EXPECT_EQ(tap(25, 50), "round as round");
  EXPECT_EQ(touched(75, 200), "-");
}

TEST_F(WidgetTouchTest, APopupComesBeforeAllElse) {
  button("below", {10, 10, 100, 30});
  QMenu menu;
  QObject::connect(menu.addAction("entry"), &QAction::triggered, [this] { deeds_ << "entry"; });
  menu.addAction("grey")->setEnabled(false);
  menu.setObjectName("menu");
  show();
  menu.popup(window_.mapToGlobal(QPoint(20, 15)));
  ASSERT_TRUE(pumpUntil([&] { return menu.isVisible(); }));
  const QPoint entry =
      window_.mapFromGlobal(menu.mapToGlobal(menu.actionGeometry(menu.actions().at(0)).center()));
  const QPoint grey =
      window_.mapFromGlobal(menu.mapToGlobal(menu.actionGeometry(menu.actions().at(1)).center()));
  EXPECT_EQ(tap(grey.x(), grey.y()), "- as -");
  EXPECT_EQ(tap(entry.x(), entry.y()), "entry as menu");
  ASSERT_TRUE(pumpUntil([&] { return !menu.isVisible(); }));
  EXPECT_EQ(tap(60, 25), "below as below");
}

TEST_F(WidgetTouchTest, AModalDialogKeepsTouchesFromWhatIsBehind) {
  button("behind", {10, 10, 100, 30});
  show();
  QDialog dialog(&window_);
  dialog.setModal(true);
  dialog.resize(200, 100);
  button("inside", {10, 10, 100, 30}, &dialog);
  show(dialog);
  EXPECT_EQ(tap(60, 25), "inside as inside");
}

TEST_F(WidgetTouchTest, OfModalDialogsTheLastOneTakesTouches) {
  QDialog first(&window_);
  QDialog second(&window_);
  for (QDialog* dialog : {&first, &second}) {
    dialog->setModal(true);
    dialog->resize(200, 100);
  }
  button("earlier", {0, 0, 100, 50}, &first);
  button("later", {0, 0, 100, 50}, &second);
  show();
  show(first);
  show(second);
  EXPECT_EQ(tap(25, 25), "later as later");
  second.close();
  show(first);
  EXPECT_EQ(tap(25, 25), "earlier as earlier");
}

TEST_F(WidgetTouchTest, ReachesWhatIsTurnedInAGraphicsScene) {
  QGraphicsScene scene;
  auto* const inside = new QPushButton("inside");
  QObject::connect(inside, &QPushButton::clicked, [this] { deeds_ << "inside"; });
  inside->setObjectName("button");
  inside->setFixedSize(100, 40);
  // Takes no press, and lets none through.
  auto* const lid = new QFrame(inside);
  lid->setAttribute(Qt::WA_NoMousePropagation);
  lid->setGeometry(0, 0, 30, 40);
  QGraphicsProxyWidget* const proxy = scene.addWidget(inside);
  QGraphicsView view(&scene, &window_);
  view.setObjectName("view");
  view.setFrameShape(QFrame::NoFrame);
  view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  view.setGeometry(0, 0, 300, 200);
  scene.setSceneRect(0, 0, 300, 200);
  // Stands upright from (100, 50), 40 wide and 100 tall, then twice that.
  proxy->setPos(180, 10);
  proxy->setRotation(90);
  show();
  EXPECT_EQ(tap(160, 60), "inside as button");
  EXPECT_EQ(tap(230, 30), "- as -");
  proxy->setScale(1.5);
  EXPECT_EQ(tap(130, 150), "inside as button");
  EXPECT_EQ(tap(160, 30), "- as -");
  QGraphicsRectItem* const figure = scene.addRect(0, 0, 20, 20);
  EXPECT_EQ(tap(10, 10), "- as -");
  figure->setFlag(QGraphicsItem::ItemIsSelectable);
  EXPECT_EQ(tap(10, 10), "- as view");
  EXPECT_TRUE(figure->isSelected());
  inside->setEnabled(false);
  EXPECT_EQ(tap(160, 60), "- as -");
}

constexpr const char* quickButton = R"(
  import QtQuick
  Item {
    width: 200; height: 100
    property string deeds
    MouseArea {
      objectName: "area"; x: 50; y: 20; width: 80; height: 40; rotation: 90
      onClicked: (mouse) => parent.deeds += Math.round(mouse.x) + "," + Math.round(mouse.y)
    }
  })";

TEST_F(WidgetTouchTest, ReachesTheItemsOfAnEmbeddedScene) {
  QQuickWidget scene(&window_);
  scene.setObjectName("scene");
  QQmlComponent component(scene.engine());
  component.setData(quickButton, QUrl());
  QObject* const root = component.create();
  ASSERT_NE(root, nullptr) << component.errorString().toStdString();
  scene.setContent(QUrl(), &component, root);
  scene.setGeometry(100, 100, 200, 100);
  Board& cover = board("cover", {170, 100, 10, 100});
  show();
  // The centre of the area is at (90, 40) of the scene. Turned, its right end points down.
  EXPECT_EQ(tap(190, 160), "- as area");
  EXPECT_EQ(root->property("deeds").toString(), "60,20");
  EXPECT_EQ(tap(225, 140), "- as -") << "outside of the turned area";
  EXPECT_EQ(tap(175, 140), "cover as cover");
  cover.hide();
  EXPECT_EQ(tap(175, 140), "- as area");
}

TEST_F(WidgetTouchTest, KeysReachAnEmbeddedSceneOnlyWhileItHasTheFocus) {
  QQuickWidget scene(&window_);
  QQmlComponent component(scene.engine());
  component.setData(
      "import QtQuick\nFocusScope { focus: true; TextInput { objectName: 'inner'; focus: true } }",
      QUrl());
  QObject* const root = component.create();
  ASSERT_NE(root, nullptr) << component.errorString().toStdString();
  scene.setContent(QUrl(), &component, root);
  scene.setGeometry(0, 0, 200, 100);
  QLineEdit field(&window_);
  field.setGeometry(0, 200, 200, 30);
  show();
  const auto typed = [&](const char* text) {
    for (const auto& view : viewsBelow(*keyWindowOf(world_.application()))) {
      if (const auto responder = view->responder(); responder && responder->isFirstResponder()) {
        platform::TextInput* const input = responder->asTextInput();
        if (input != nullptr) {
          input->insertText(text);
        }
        break;
      }
    }
    return root->findChild<QObject*>("inner")->property("text").toString().toStdString() + '|' +
           field.text().toStdString();
  };
  scene.setFocus();
  EXPECT_EQ(typed("in"), "in|");
  field.setFocus();
  EXPECT_EQ(typed("out"), "in|out");
  scene.setFocus();
  EXPECT_EQ(typed("side"), "inside|out");
}

TEST_F(WidgetTouchTest, ReachesTheItemsOfAWindowInAContainer) {
  auto* const quick = new QQuickWindow;
  QQmlEngine engine;
  QQmlComponent component(&engine);
  component.setData(quickButton, QUrl());
  auto* const root = qobject_cast<QQuickItem*>(component.create());
  ASSERT_NE(root, nullptr);
  root->setParentItem(quick->contentItem());
  QWidget* const container = QWidget::createWindowContainer(quick, &window_);
  container->setGeometry(100, 100, 200, 100);
  show();
  EXPECT_EQ(touched(190, 140), "area");
  tap(190, 140);
  EXPECT_EQ(root->property("deeds").toString(), "40,20");
  delete root;
}

TEST_F(WidgetTouchTest, AWidgetThatGoesWithItsTouchDoesNoHarm) {
  auto* const going = new QPushButton("going", &window_);
  going->setGeometry(0, 0, 100, 30);
  QObject::connect(going, &QPushButton::pressed, [going] { delete going; });
  show();
  const auto view = keyWindowOf(world_.application())->hitTest({50, 15});
  ASSERT_NE(view, nullptr);
  const auto responder = view->responder();
  ASSERT_NE(responder->asControl(), nullptr);
  responder->asControl()->sendTouchUpInside();
  EXPECT_EQ(responder->asControl(), nullptr);
  EXPECT_EQ(touched(50, 15), "window");
}

}  // namespace
}  // namespace tarnix::contract
