// A window, or a dialog with --dialog, with one of each kind of widget that reacts to a touch, each
// at a place of its own. What happens to one is said on standard error as "did: NAME WHAT".
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QIntValidator>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QStringList>
#include <QTabBar>
#include <QTableWidget>
#include <QTextEdit>
#include <QThread>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>

#include "tests/integration/acting/did.h"

namespace {

/// Takes presses and keys in code of its own, as games do.
class Canvas : public QWidget {
 public:
  using QWidget::QWidget;

 protected:
  void mousePressEvent(QMouseEvent* event) override {
    did(QStringLiteral("canvas %1 %2").arg(event->pos().x()).arg(event->pos().y()));
    setFocus();
  }
  void keyPressEvent(QKeyEvent* event) override { did("key " + event->text()); }
};

template <class Widget>
Widget* placed(Widget* widget, int x, int y, int width, int height) {
  widget->setGeometry(x, y, width, height);
  return widget;
}

void addButtons(QWidget* window) {
  auto* const save = placed(new QPushButton("&Save", window), 10, 40, 120, 30);
  QObject::connect(save, &QPushButton::clicked, [] { did("save clicked"); });
  auto* const off = placed(new QPushButton("Off", window), 140, 40, 120, 30);
  off->setEnabled(false);
  QObject::connect(off, &QPushButton::clicked, [] { did("off clicked"); });
  auto* const check = placed(new QCheckBox("Check", window), 270, 40, 120, 30);
  QObject::connect(check, &QCheckBox::toggled,
                   [](bool on) { did(on ? "check true" : "check false"); });
  auto* const radio = placed(new QRadioButton("Radio", window), 400, 40, 120, 30);
  QObject::connect(radio, &QRadioButton::toggled,
                   [](bool on) { did(on ? "radio true" : "radio false"); });
  auto* const modal = placed(new QPushButton("Modal", window), 530, 40, 90, 30);
  QObject::connect(modal, &QPushButton::clicked, [window] {
    // A loop of its own, until the dialog is closed.
    QDialog dialog(window);
    dialog.resize(200, 100);
    auto* const done = placed(new QPushButton("Done", &dialog), 20, 20, 100, 30);
    QObject::connect(done, &QPushButton::clicked, &dialog, &QDialog::accept);
    did("modal opened");
    did(dialog.exec() == QDialog::Accepted ? "modal accepted" : "modal rejected");
  });
  auto* const popUp = placed(new QToolButton(window), 530, 80, 90, 30);
  popUp->setText("Pop");
  popUp->setPopupMode(QToolButton::InstantPopup);
  auto* const menu = new QMenu(popUp);
  QObject::connect(menu->addAction("Choice"), &QAction::triggered, [] { did("choice"); });
  menu->addAction("Grey")->setEnabled(false);
  popUp->setMenu(menu);
  auto* const close = placed(new QPushButton("Close", window), 530, 600, 90, 30);
  QObject::connect(close, &QPushButton::pressed, window, &QWidget::close);
  auto* const busy = placed(new QPushButton("Busy", window), 430, 600, 90, 30);
  QObject::connect(busy, &QPushButton::clicked, [] {
    did("busy");
    QThread::sleep(4);
  });
}

void addValues(QWidget* window) {
  auto* const slider = placed(new QSlider(Qt::Horizontal, window), 10, 80, 200, 30);
  slider->setRange(0, 100);
  QObject::connect(slider, &QSlider::valueChanged, [] { did("slider"); });
  auto* const spin = placed(new QSpinBox(window), 220, 80, 100, 30);
  QObject::connect(spin, &QSpinBox::valueChanged,
                   [](int value) { did(QStringLiteral("spin %1").arg(value)); });
  auto* const combo = placed(new QComboBox(window), 330, 80, 120, 30);
  combo->addItems({"One", "Two", "Three"});
  QObject::connect(combo, &QComboBox::activated,
                   [](int index) { did(QStringLiteral("combo %1").arg(index)); });
  auto* const tabs = placed(new QTabBar(window), 10, 120, 300, 30);
  tabs->addTab("First");
  tabs->addTab("Second");
  QObject::connect(tabs, &QTabBar::currentChanged,
                   [](int index) { did(QStringLiteral("tab %1").arg(index)); });
  auto* const group = placed(new QGroupBox("Group", window), 330, 120, 120, 50);
  group->setCheckable(true);
  QObject::connect(group, &QGroupBox::toggled,
                   [](bool on) { did(on ? "group true" : "group false"); });
  auto* const label =
      placed(new QLabel("see the <a href=\"there\">linked</a> page", window), 460, 120, 170, 30);
  QObject::connect(label, &QLabel::linkActivated, [](const QString& link) { did("link " + link); });
}

void addFields(QWidget* window) {
  const auto field = [window](const char* name, int x, int width) {
    auto* const edit = placed(new QLineEdit(window), x, 180, width, 30);
    edit->setPlaceholderText(name);
    QObject::connect(edit, &QLineEdit::textEdited,
                     [name](const QString& text) { did(QString(name) + " " + text); });
    return edit;
  };
  field("plain", 10, 200);
  field("short", 220, 100)->setMaxLength(5);
  auto* const number = field("number", 330, 100);
  number->setValidator(new QIntValidator(0, 999, number));
  field("mask", 440, 80)->setInputMask("99-99;_");
  auto* const fixed = field("fixed", 530, 90);
  fixed->setText("fixed");
  fixed->setReadOnly(true);
  auto* const text = placed(new QPlainTextEdit(window), 10, 220, 200, 60);
  QObject::connect(text, &QPlainTextEdit::textChanged,
                   [text] { did("text " + text->toPlainText().replace('\n', '|')); });
  auto* const rich = placed(new QTextEdit(window), 220, 220, 200, 60);
  QObject::connect(rich, &QTextEdit::textChanged, [rich] { did("rich " + rich->toPlainText()); });
  placed(new Canvas(window), 430, 220, 100, 60)->setFocusPolicy(Qt::ClickFocus);
}

template <class Area>
void tellRest(Area* area, const char* name) {
  auto* const rest = new QTimer(area);
  rest->setSingleShot(true);
  rest->setInterval(400);
  QObject::connect(area->verticalScrollBar(), &QScrollBar::valueChanged, rest,
                   qOverload<>(&QTimer::start));
  QObject::connect(rest, &QTimer::timeout, [area, name] {
    did(QStringLiteral("%1 at %2").arg(name).arg(area->verticalScrollBar()->value()));
  });
}

void addViews(QWidget* window) {
  auto* const list = placed(new QListWidget(window), 10, 290, 150, 150);
  for (int row = 0; row < 100; ++row) {
    list->addItem(QStringLiteral("Row %1").arg(row));
  }
  list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  QObject::connect(list, &QListWidget::itemClicked,
                   [](const QListWidgetItem* item) { did("list " + item->text()); });
  tellRest(list, "list");
  auto* const table = placed(new QTableWidget(40, 3, window), 170, 290, 200, 150);
  for (int row = 0; row < 40; ++row) {
    table->setItem(row, 0, new QTableWidgetItem(QStringLiteral("Cell %1").arg(row)));
  }
  QObject::connect(table, &QTableWidget::cellClicked, [](int row, int column) {
    did(QStringLiteral("cell %1 %2").arg(row).arg(column));
  });
  tellRest(table, "table");
  auto* const tree = placed(new QTreeWidget(window), 380, 290, 150, 150);
  tree->setHeaderLabel("Tree");
  auto* const top = new QTreeWidgetItem(tree, {"Top"});
  new QTreeWidgetItem(top, QStringList("Leaf"));
  tree->expandAll();
  QObject::connect(tree, &QTreeWidget::itemClicked,
                   [](const QTreeWidgetItem* item) { did("tree " + item->text(0)); });
  auto* const area = placed(new QScrollArea(window), 10, 450, 200, 120);
  auto* const content = new QWidget;
  content->resize(180, 600);
  auto* const deep = placed(new QPushButton("Deep", content), 10, 200, 100, 30);
  QObject::connect(deep, &QPushButton::clicked, [] { did("deep clicked"); });
  area->setWidget(content);
  tellRest(area, "area");
}

}  // namespace

int main(int argumentCount, char** arguments) {
  QApplication application(argumentCount, arguments);
  const bool asDialog = QApplication::arguments().contains("--dialog");
  QWidget* const window = asDialog ? new QDialog : new QWidget;
  window->resize(640, 640);
  window->setWindowTitle("Widgets");
  addButtons(window);
  addValues(window);
  addFields(window);
  addViews(window);
  auto* const bar = placed(new QMenuBar(window), 0, 0, 640, 30);
  QMenu* const file = bar->addMenu("File");
  QObject::connect(file->addAction("Open"), &QAction::triggered, [] { did("open"); });
  QObject::connect(file->addMenu("More")->addAction("Inner"), &QAction::triggered,
                   [] { did("inner"); });
  if (asDialog) {
    QWidget behind;
    behind.resize(640, 640);
    auto* const reach = placed(new QPushButton("Reach", &behind), 10, 40, 120, 30);
    QObject::connect(reach, &QPushButton::clicked, [] { did("reached"); });
    behind.show();
    return static_cast<QDialog*>(window)->exec();
  }
  window->show();
  return QApplication::exec();
}
