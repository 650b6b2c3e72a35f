// A window with a scene of figures, some of them widgets, shown larger than it is, and with views
// of items of which some are disabled. What happens to one is said on standard error as "did: NAME
// WHAT".
#include <QApplication>
#include <QColorDialog>
#include <QComboBox>
#include <QGraphicsProxyWidget>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsSimpleTextItem>
#include <QGraphicsTextItem>
#include <QGraphicsView>
#include <QKeyEvent>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QUrl>

#include "tests/integration/acting/did.h"

namespace {

class Piece : public QGraphicsRectItem {
 public:
  using QGraphicsRectItem::QGraphicsRectItem;

 protected:
  void mousePressEvent(QGraphicsSceneMouseEvent*) override {
    did("piece");
    setFocus();
  }
  void keyPressEvent(QKeyEvent* event) override { did("key " + event->text()); }
};

/// Text that does something although it cannot be edited.
class Word : public QGraphicsTextItem {
 public:
  using QGraphicsTextItem::QGraphicsTextItem;

 protected:
  void mousePressEvent(QGraphicsSceneMouseEvent*) override { did("word"); }
};

/// Looks like a figure of the application's own and does nothing.
class Ornament : public QGraphicsRectItem {
 public:
  using QGraphicsRectItem::QGraphicsRectItem;

 protected:
  void hoverEnterEvent(QGraphicsSceneHoverEvent*) override {}
};

/// Made to be tapped by a filter, as applications do with labels.
class Filter : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::MouseButtonRelease) {
      did("filtered");
    }
    return false;
  }
};

void addPopup(QWidget* window) {
  auto* const label = new QLabel("Filtered", window);
  label->setGeometry(10, 645, 100, 28);
  label->setCursor(Qt::PointingHandCursor);
  label->installEventFilter(new Filter(label));
  auto* const popup = new QFrame(window, Qt::Popup);
  auto* const field = new QLineEdit(popup);
  field->setGeometry(10, 10, 100, 28);
  field->setPlaceholderText("Rename");
  QObject::connect(field, &QLineEdit::textEdited,
                   [](const QString& text) { did("renamed " + text); });
  auto* const close = new QPushButton("Rename it", popup);
  close->setGeometry(120, 10, 100, 28);
  QObject::connect(close, &QPushButton::clicked, popup, &QWidget::close);
  auto* const open = new QPushButton("Open popup", window);
  open->setGeometry(120, 645, 100, 28);
  QObject::connect(open, &QPushButton::clicked, [popup, window] {
    popup->setGeometry(QRect(window->mapToGlobal(QPoint(100, 500)), QSize(240, 50)));
    popup->show();
  });
}

QWidget* form() {
  auto* const widget = new QWidget;
  widget->resize(200, 200);
  auto* const button = new QPushButton("Inside", widget);
  button->setGeometry(10, 10, 80, 30);
  QObject::connect(button, &QPushButton::clicked, [] { did("inside clicked"); });
  auto* const off = new QPushButton("Off", widget);
  off->setGeometry(100, 10, 80, 30);
  off->setEnabled(false);
  auto* const field = new QLineEdit(widget);
  field->setGeometry(10, 50, 80, 30);
  field->setPlaceholderText("Field");
  QObject::connect(field, &QLineEdit::textEdited,
                   [](const QString& text) { did("field " + text); });
  auto* const combo = new QComboBox(widget);
  combo->setGeometry(100, 50, 80, 30);
  combo->addItems({"One", "Two"});
  QObject::connect(combo, &QComboBox::activated,
                   [](int index) { did(QStringLiteral("combo %1").arg(index)); });
  auto* const list = new QListWidget(widget);
  list->setGeometry(10, 90, 180, 100);
  list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  for (int row = 0; row < 50; ++row) {
    list->addItem(QStringLiteral("Row %1").arg(row));
  }
  QObject::connect(list, &QListWidget::itemClicked,
                   [](const QListWidgetItem* item) { did("list " + item->text()); });
  QObject::connect(list->verticalScrollBar(), &QScrollBar::valueChanged, [](int value) {
    if (value == 60) {
      did("list at 60");
    }
  });
  return widget;
}

void fill(QGraphicsScene& scene) {
  scene.setSceneRect(0, 0, 380, 380);
  scene.addSimpleText("Plain words")->setPos(10, 10);
  auto* const piece = new Piece(0, 0, 40, 40);
  piece->setPos(10, 40);
  piece->setToolTip("<b>Knight</b>");
  piece->setFlag(QGraphicsItem::ItemIsFocusable);
  scene.addItem(piece);
  auto* const word = new Word("Own words");
  word->setPos(100, 40);
  scene.addItem(word);
  auto* const ornament = new Ornament(0, 0, 40, 40);
  ornament->setPos(200, 40);
  ornament->setToolTip("Ornament");
  scene.addItem(ornament);
  auto* const hidden = scene.addSimpleText("Hidden");
  hidden->setPos(10, 10);
  hidden->setVisible(false);
  QGraphicsProxyWidget* const proxy = scene.addWidget(form());
  proxy->setRotation(90);
  proxy->setPos(300, 100);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  QApplication application(argumentCount, arguments);
  QWidget window;
  window.resize(900, 680);
  addPopup(&window);
  QGraphicsScene scene;
  fill(scene);
  QGraphicsView view(&scene, &window);
  view.setGeometry(10, 10, 600, 600);
  view.scale(1.5, 1.5);
  QTableWidget table(3, 2, &window);
  table.setGeometry(620, 10, 270, 200);
  table.setHorizontalHeaderLabels({"Visible", "Name"});
  for (int row = 0; row < 3; ++row) {
    auto* const box = new QTableWidgetItem;
    box->setCheckState(row == 0 ? Qt::Checked : Qt::Unchecked);
    table.setItem(row, 0, box);
    auto* const name = new QTableWidgetItem(QStringLiteral("  Layer\n%1").arg(row));
    if (row == 1) {
      name->setFlags(name->flags() & ~Qt::ItemIsEnabled);
    }
    table.setItem(row, 1, name);
  }
  QObject::connect(&table, &QTableWidget::itemChanged, [](const QTableWidgetItem* item) {
    did(QStringLiteral("box %1 %2").arg(item->row()).arg(item->checkState()));
  });
  QObject::connect(&table, &QTableWidget::itemSelectionChanged, [] { did("chosen"); });
  QTreeWidget tree(&window);
  tree.setGeometry(620, 220, 270, 200);
  tree.setHeaderLabel("Tree");
  auto* const top = new QTreeWidgetItem(&tree, {"Locked"});
  top->setFlags(top->flags() & ~Qt::ItemIsEnabled);
  new QTreeWidgetItem(top, QStringList("Leaf"));
  QObject::connect(&tree, &QTreeWidget::itemExpanded, [] { did("unfolded"); });
  QMdiArea area(&window);
  area.setGeometry(620, 430, 270, 140);
  QMdiSubWindow* const inner = area.addSubWindow(new QLabel("Paper"));
  inner->setWindowTitle("Inner");
  inner->setGeometry(5, 5, 220, 100);
  QObject::connect(inner, &QMdiSubWindow::windowStateChanged,
                   [](Qt::WindowStates, Qt::WindowStates state) {
                     did(state.testFlag(Qt::WindowMinimized) ? "small" : "not small");
                   });
  QLineEdit search("text", &window);
  search.setGeometry(620, 580, 130, 30);
  search.setClearButtonEnabled(true);
  QObject::connect(&search, &QLineEdit::textChanged,
                   [](const QString& text) { did("search " + text); });
  QKeySequenceEdit keys(&window);
  keys.setGeometry(760, 580, 130, 30);
  QTextBrowser page(&window);
  page.setGeometry(120, 610, 490, 28);
  page.setHtml("Read <a href=\"#one\">the <b>first</b></a> or <a href=\"#two\">the second</a>.");
  page.setOpenLinks(false);
  QObject::connect(&page, &QTextBrowser::anchorClicked,
                   [](const QUrl& address) { did("followed " + address.fragment()); });
  QLabel about("By <a href=\"#me\">somebody</a>, see <a href=\"#law\">licence</a>", &window);
  about.setGeometry(620, 612, 270, 26);
  QObject::connect(&about, &QLabel::linkActivated,
                   [](const QString& link) { did("link " + link); });
  QPushButton colour("Colour", &window);
  colour.setGeometry(10, 610, 100, 28);
  QObject::connect(&colour, &QPushButton::clicked, [&window] {
    auto* const dialog = new QColorDialog(&window);
    QObject::connect(dialog, &QColorDialog::currentColorChanged, [] { did("colour"); });
    dialog->open();
  });
  window.show();
  return QApplication::exec();
}
