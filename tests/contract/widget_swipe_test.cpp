#include <gtest/gtest.h>

#include <QGraphicsScene>
#include <QGraphicsView>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QTableWidget>
#include <QTreeWidget>

#include "tests/contract/qt6_host_world.h"
#include "tests/contract/touch.h"

/// Where each kind of widget that scrolls comes to rest after a swipe.
namespace tarnix::contract {
namespace {

class WidgetSwipeTest : public testing::Test {
 protected:
  /// A window of 200 x 200 that `area` fills.
  template <class Area>
  Area& show(Area* area) {
    area->setParent(&window_);
    area->setGeometry(0, 0, 200, 200);
    area->show();
    window_.resize(200, 200);
    window_.show();
    window_.activateWindow();
    EXPECT_TRUE(pumpUntil([&] { return window_.isActiveWindow(); }));
    return *area;
  }

  void swipe(platform::Point from, platform::Point to) {
    EXPECT_TRUE(swipeAt(world_.application(), from, to)) << "nothing scrolls there";
  }

  static bool comesTo(const QAbstractScrollArea& area, int x, int y) {
    return pumpUntil([&] {
      return area.horizontalScrollBar()->value() == x && area.verticalScrollBar()->value() == y;
    });
  }

  WidgetsHostWorld world_;
  QWidget window_;
};

TEST_F(WidgetSwipeTest, WhatCountsPixelsGoesAsFarAsTheFinger) {
  auto* const area = new QScrollArea;
  area->setWidget(new QWidget);
  area->widget()->resize(1000, 1000);
  show(area);
  swipe({100, 100}, {60, 30});
  EXPECT_TRUE(comesTo(*area, 40, 70));

  auto& graphics = show(new QGraphicsView);
  QGraphicsScene scene(0, 0, 1000, 1000);
  graphics.setScene(&scene);
  graphics.horizontalScrollBar()->setValue(10);
  graphics.verticalScrollBar()->setValue(20);
  swipe({100, 100}, {60, 30});
  EXPECT_TRUE(comesTo(graphics, 50, 90));

  auto& text = show(new QTextEdit);
  text.setLineWrapMode(QTextEdit::NoWrap);
  text.setPlainText(QString("a line that is wider than what is seen of it\n").repeated(60));
  swipe({100, 100}, {60, 30});
  EXPECT_TRUE(comesTo(text, 40, 70));
}

TEST_F(WidgetSwipeTest, WhatCountsRowsAndColumnsGoesAsManyAsTheFingerPasses) {
  auto& table = show(new QTableWidget(40, 20));
  for (int index = 0; index < 40; ++index) {
    table.setRowHeight(index, 20);
    table.setColumnWidth(index % 20, 50);
  }
  swipe({150, 150}, {50, 90});
  EXPECT_TRUE(comesTo(table, 2, 3));
  swipe({50, 90}, {9000, 9000});
  EXPECT_TRUE(comesTo(table, 0, 0));

  auto& list = show(new QListWidget);
  list.setFlow(QListView::LeftToRight);
  for (int index = 0; index < 40; ++index) {
    auto* const item = new QListWidgetItem(QString::number(index), &list);
    item->setSizeHint({50, 20});
  }
  letPass(std::chrono::milliseconds(20));
  swipe({150, 50}, {50, 50});
  EXPECT_TRUE(comesTo(list, 2, 0));
}

TEST_F(WidgetSwipeTest, ATreeGoesDownItsRowsAndAlong) {
  auto& tree = show(new QTreeWidget);
  tree.setColumnCount(4);
  tree.setUniformRowHeights(true);
  for (int index = 0; index < 60; ++index) {
    auto* const item = new QTreeWidgetItem(&tree);
    item->setSizeHint(0, {100, 20});
  }
  letPass(std::chrono::milliseconds(20));
  swipe({150, 150}, {90, 110});
  EXPECT_TRUE(comesTo(tree, 60, 2));
}

TEST_F(WidgetSwipeTest, ATextOfLinesGoesByLines) {
  auto& text = show(new QPlainTextEdit);
  text.setPlainText(QString("line\n").repeated(100));
  const int line = text.fontMetrics().lineSpacing();
  swipe({100, 150}, {100, 150.0 - 5 * line});
  EXPECT_TRUE(comesTo(text, 0, 5));
}

TEST_F(WidgetSwipeTest, WhatCannotGoThatWayLetsTheAreaAroundGo) {
  auto* const around = new QScrollArea;
  auto* const content = new QWidget;
  content->resize(150, 900);
  auto* const list = new QListWidget(content);
  list->setGeometry(0, 0, 150, 60);
  list->setFlow(QListView::LeftToRight);
  list->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  for (int index = 0; index < 40; ++index) {
    new QListWidgetItem(QString::number(index), list);
  }
  around->setWidget(content);
  show(around);
  letPass(std::chrono::milliseconds(20));
  swipe({100, 10}, {60, -20});
  EXPECT_TRUE(comesTo(*list, 40, 0));
  EXPECT_TRUE(comesTo(*around, 0, 30));
}

}  // namespace
}  // namespace tarnix::contract
