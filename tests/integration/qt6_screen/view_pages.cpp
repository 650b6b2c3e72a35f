#include "tests/integration/qt6_screen/view_pages.h"

#include <QColumnView>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QScrollArea>
#include <QStandardItemModel>
#include <QString>
#include <QTableWidget>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QWidget>

namespace tarnix::integration {
namespace {

QListWidget* list(int rows) {
  auto* const list = new QListWidget;
  for (int row = 0; row < rows; ++row) {
    list->addItem(QString("Row %1").arg(row));
  }
  // So that what is in the middle of them is no help in finding those that are shown.
  for (int row = rows / 4; row < rows; ++row) {
    list->setRowHidden(row, rows > 100);
  }
  list->setCurrentRow(1);
  return list;
}

QTableWidget* table() {
  auto* const table = new QTableWidget(100, 3);
  table->setHorizontalHeaderLabels({"Number", "Square", "Hidden"});
  for (int row = 0; row < 100; ++row) {
    table->setItem(row, 0, new QTableWidgetItem(QString::number(row)));
    auto* const square = new QTableWidgetItem;
    square->setData(Qt::DisplayRole, row * row);
    table->setItem(row, 1, square);
    table->setItem(row, 2, new QTableWidgetItem("never seen"));
  }
  table->item(0, 0)->setCheckState(Qt::Checked);
  table->setColumnHidden(2, true);
  table->verticalHeader()->swapSections(0, 2);
  return table;
}

QTreeWidget* tree() {
  auto* const tree = new QTreeWidget;
  tree->setHeaderLabels({"Name", "Size"});
  for (int folder = 0; folder < 5; ++folder) {
    auto* const item = new QTreeWidgetItem(tree, {QString("Folder %1").arg(folder), "-"});
    for (int file = 0; file < 3; ++file) {
      new QTreeWidgetItem(item, {QString("File %1.%2").arg(folder).arg(file), "1 KB"});
    }
  }
  tree->topLevelItem(1)->setExpanded(true);
  tree->header()->setStretchLastSection(false);
  tree->setColumnWidth(0, 90);
  tree->setColumnWidth(1, 40);
  return tree;
}

}  // namespace

void showViews() {
  auto* const window = new QWidget;
  auto* const grid = new QGridLayout(window);
  grid->addWidget(list(1000), 0, 0);
  auto* const icons = list(40);
  icons->setViewMode(QListView::IconMode);
  grid->addWidget(icons, 0, 1);
  grid->addWidget(table(), 1, 0);
  grid->addWidget(tree(), 1, 1);
  auto* const columns = new QColumnView;
  auto* const model = new QStandardItemModel(columns);
  model->appendRow(new QStandardItem("In a column"));
  columns->setModel(model);
  grid->addWidget(columns, 0, 2);
  auto* const scrolled = new QScrollArea;
  auto* const content = new QWidget;
  auto* const lines = new QVBoxLayout(content);
  for (int line = 0; line < 30; ++line) {
    lines->addWidget(new QLabel(QString("Scrolled %1").arg(line)));
  }
  scrolled->setWidget(content);
  grid->addWidget(scrolled, 1, 2);
  window->resize(900, 600);
  window->show();
}

void showMany() {
  auto* const window = new QScrollArea;
  auto* const content = new QWidget;
  auto* const grid = new QGridLayout(content);
  for (int item = 0; item < 10'000; ++item) {
    grid->addWidget(new QLabel(QString("Item %1").arg(item)), item / 10, item % 10);
  }
  window->setWidget(content);
  window->resize(800, 600);
  window->show();
}

}  // namespace tarnix::integration
