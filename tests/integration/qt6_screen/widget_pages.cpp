#include "tests/integration/qt6_screen/widget_pages.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QCommandLinkButton>
#include <QDateEdit>
#include <QDial>
#include <QDialog>
#include <QDir>
#include <QDockWidget>
#include <QFormLayout>
#include <QGraphicsOpacityEffect>
#include <QGridLayout>
#include <QGroupBox>
#include <QLCDNumber>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QQuickView>
#include <QQuickWidget>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabWidget>
#include <QTemporaryFile>
#include <QTextEdit>
#include <QTimer>
#include <QToolBar>
#include <QToolBox>
#include <QToolButton>
#include <functional>
#include <map>

#include "tests/integration/qt6_screen/view_pages.h"

namespace tarnix::integration {

namespace {

/// Draws itself, as applications' own widgets do.
class Gauge : public QWidget {
 public:
  Gauge() {
    setMinimumSize(60, 24);
    setAccessibleName("Fuel gauge");
  }

 protected:
  void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), Qt::darkGreen); }
};

template <typename Widget>
Widget* named(Widget* widget, const char* name) {
  widget->setAccessibleName(name);
  return widget;
}

void addMenus(QMainWindow& window) {
  QMenu* const file = window.menuBar()->addMenu("&File");
  file->addAction("&Open...");
  QAction* const save = file->addAction("&Save\tCtrl+S");
  save->setEnabled(false);
  file->addSeparator();
  QAction* const wrap = file->addAction("&Wrap lines");
  wrap->setCheckable(true);
  wrap->setChecked(true);
  QMenu* const recent = file->addMenu("&Recent");
  recent->addAction("letter.txt");
  window.menuBar()->addMenu("Bits && &pieces")->addAction("One");
}

QWidget* buttons() {
  auto* const box = new QWidget;
  auto* const layout = new QVBoxLayout(box);
  layout->addWidget(new QPushButton("&Push"));
  auto* const checkable = new QPushButton("Pressed in");
  checkable->setCheckable(true);
  checkable->setChecked(true);
  layout->addWidget(checkable);
  auto* const disabled = new QPushButton("Disabled");
  disabled->setEnabled(false);
  layout->addWidget(disabled);
  auto* const tool = new QToolButton;
  tool->setToolTip("<b>Find</b> a word");
  layout->addWidget(tool);
  layout->addWidget(new QCommandLinkButton("Command &link", "Leads elsewhere"));
  auto* const check = new QCheckBox("&Check box");
  check->setChecked(true);
  layout->addWidget(check);
  auto* const partial = new QCheckBox("Partial");
  partial->setTristate(true);
  partial->setCheckState(Qt::PartiallyChecked);
  layout->addWidget(partial);
  layout->addWidget(new QRadioButton("Radio button"));
  auto* const group = new QGroupBox("&Group title");
  (new QVBoxLayout(group))->addWidget(new QLabel("In the group"));
  layout->addWidget(group);
  auto* const switched = new QGroupBox("Checkable group");
  switched->setCheckable(true);
  switched->setChecked(false);
  (new QVBoxLayout(switched))->addWidget(new QLabel("Switched off"));
  layout->addWidget(switched);
  return box;
}

QWidget* fields() {
  auto* const box = new QWidget;
  auto* const form = new QFormLayout(box);
  form->addRow("&Name", new QLineEdit("Ada"));
  auto* const placeholder = new QLineEdit;
  placeholder->setPlaceholderText("Street");
  form->addRow(placeholder);
  auto* const password = new QLineEdit("secret");
  password->setEchoMode(QLineEdit::Password);
  form->addRow("Password", password);
  auto* const notes = named(new QTextEdit("<b>bold</b> note"), "Notes");
  notes->setMaximumHeight(40);
  form->addRow(notes);
  auto* const plain = new QPlainTextEdit("plain text");
  plain->setMaximumHeight(40);
  form->addRow("Remarks", plain);
  auto* const combo = new QComboBox;
  combo->addItems({"Red", "Green", "Blue"});
  form->addRow("Colour", combo);
  auto* const editable = named(new QComboBox, "Editable");
  editable->setEditable(true);
  editable->addItems({"Oak", "Elm"});
  form->addRow(editable);
  auto* const spin = new QSpinBox;
  spin->setSuffix(" kg");
  spin->setValue(7);
  form->addRow("Weight", spin);
  form->addRow("Day", new QDateEdit(QDate(2024, 2, 29)));
  auto* const slider = named(new QSlider(Qt::Horizontal), "Volume");
  slider->setValue(25);
  form->addRow(slider);
  form->addRow(named(new QDial, "Balance"));
  auto* const progress = new QProgressBar;
  progress->setValue(30);
  form->addRow(progress);
  auto* const number = new QLCDNumber;
  number->display(12);
  form->addRow(number);
  return box;
}

QWidget* texts() {
  auto* const box = new QWidget;
  auto* const layout = new QVBoxLayout(box);
  layout->addWidget(new QLabel("Plain label & more"));
  layout->addWidget(new QLabel("Some <b>rich</b> text"));
  layout->addWidget(new QLabel("<a href='https://example.org'>A link</a>"));
  auto* const picture = named(new QLabel, "Picture");
  QPixmap pixmap(20, 20);
  pixmap.fill(Qt::red);
  picture->setPixmap(pixmap);
  layout->addWidget(picture);
  layout->addWidget(new Gauge);
  auto* const hidden = new QLabel("Not seen");
  layout->addWidget(hidden);
  hidden->hide();
  auto* const faded = new QWidget;
  (new QVBoxLayout(faded))->addWidget(new QLabel("Transparent"));
  auto* const effect = new QGraphicsOpacityEffect;
  effect->setOpacity(0);
  faded->setGraphicsEffect(effect);
  layout->addWidget(faded);
  auto* const ground = new QLabel("Behind a curtain");
  layout->addWidget(ground);
  auto* const curtain = new QWidget(box);
  curtain->setAutoFillBackground(true);
  QTimer::singleShot(0, curtain, [=] { curtain->setGeometry(ground->geometry()); });
  layout->addStretch();
  return box;
}

void showControls() {
  auto* const window = new QMainWindow;
  window->setWindowTitle("Controls");
  addMenus(*window);
  QToolBar* const bar = window->addToolBar("Tools");
  bar->addAction("Undo")->setToolTip("Undo the last step");
  bar->addAction("Redo")->setEnabled(false);
  auto* const content = new QWidget;
  auto* const layout = new QHBoxLayout(content);
  for (QWidget* column : {buttons(), fields(), texts()}) {
    layout->addWidget(column);
  }
  window->setCentralWidget(content);
  auto* const dock = new QDockWidget("&Docked");
  dock->setWidget(new QLabel("In the dock"));
  window->addDockWidget(Qt::RightDockWidgetArea, dock);
  window->statusBar()->showMessage("Ready.");
  window->resize(1000, 700);
  window->show();
}

/// Fields whose labels are only what stands beside them.
void showLabelsNearby() {
  auto* const window = new QWidget;
  auto* const grid = new QGridLayout(window);
  grid->addWidget(new QLabel("Width:"), 0, 0);
  grid->addWidget(new QSpinBox, 0, 1);
  grid->addWidget(new QLabel("Style:"), 1, 0);
  auto* const combo = new QComboBox;
  combo->addItems({"Bold", "Thin"});
  grid->addWidget(combo, 1, 1);
  grid->addWidget(new QLabel("Address"), 2, 0);
  grid->addWidget(new QPlainTextEdit("First line\nsecond line"), 3, 0, 1, 2);
  auto* const labelled = new QLineEdit;
  auto* const label = new QLabel("Of the &next");
  label->setBuddy(labelled);
  grid->addWidget(label, 4, 0);
  // Beside a label that belongs to another: it has no name but its content.
  grid->addWidget(new QLineEdit("alone"), 4, 1);
  grid->addWidget(labelled, 5, 0);
  auto* const mirrored = new QWidget;
  mirrored->setLayoutDirection(Qt::RightToLeft);
  auto* const row = new QHBoxLayout(mirrored);
  row->addWidget(new QLabel("שם"));
  row->addWidget(new QLineEdit);
  grid->addWidget(mirrored, 6, 0, 1, 2);
  auto* const button = new QToolButton;
  button->setIcon(QIcon::fromTheme("go-previous", QIcon()));
  grid->addWidget(button, 7, 0);
  window->resize(500, 500);
  window->show();
}

void showContainers() {
  auto* const window = new QWidget;
  auto* const grid = new QGridLayout(window);
  auto* const tabs = new QTabWidget;
  tabs->addTab(new QLabel("On the first page"), "&First");
  tabs->addTab(new QLabel("On the second page"), "Second");
  tabs->addTab(new QLabel("On the third page"), "Third");
  tabs->setTabEnabled(2, false);
  grid->addWidget(tabs, 0, 0);
  auto* const stack = new QStackedWidget;
  stack->addWidget(new QLabel("Stacked below"));
  stack->addWidget(new QLabel("Stacked above"));
  stack->setCurrentIndex(1);
  grid->addWidget(stack, 0, 1);
  auto* const toolBox = new QToolBox;
  toolBox->addItem(new QLabel("In the open drawer"), "Open drawer");
  toolBox->addItem(new QLabel("In the closed drawer"), "Closed drawer");
  grid->addWidget(toolBox, 1, 0);
  auto* const area = new QMdiArea;
  area->addSubWindow(new QLabel("Lower"))->setGeometry(0, 0, 200, 120);
  area->addSubWindow(new QLabel("Upper"))->setGeometry(10, 10, 220, 140);
  for (QMdiSubWindow* subWindow : area->subWindowList()) {
    subWindow->setWindowTitle("Document [*][*][*]");
    subWindow->setWindowModified(true);
    subWindow->show();
  }
  grid->addWidget(area, 1, 1);
  window->resize(800, 500);
  window->show();
}

void showMenu() {
  auto* const window = new QMainWindow;
  addMenus(*window);
  window->setCentralWidget(new QPushButton("In the window"));
  window->resize(400, 300);
  window->show();
  QTimer::singleShot(100, window, [=] {
    QMenu* const file = window->menuBar()->actions().first()->menu();
    file->popup(window->mapToGlobal(QPoint(20, 40)));
    file->setActiveAction(file->actions().last());
    QMenu* const recent = file->actions().last()->menu();
    recent->popup(window->mapToGlobal(QPoint(200, 150)));
  });
}

void showNarrowMenuBar() {
  auto* const window = new QMainWindow;
  addMenus(*window);
  window->setMinimumWidth(1);
  window->resize(90, 200);
  window->show();
}

void showComboBox() {
  auto* const window = new QWidget;
  auto* const layout = new QVBoxLayout(window);
  auto* const combo = new QComboBox;
  combo->addItems({"Apple", "Banana", "Cherry"});
  layout->addWidget(combo);
  layout->addStretch();
  window->resize(300, 300);
  window->show();
  QTimer::singleShot(100, combo, &QComboBox::showPopup);
}

void showDialog() {
  auto* const window = new QPushButton("In the window");
  window->resize(400, 300);
  window->show();
  auto* const dialog = new QDialog(window);
  (new QVBoxLayout(dialog))->addWidget(new QPushButton("In the dialog"));
  dialog->open();
}

const char* const scene = R"(
  import QtQuick
  Rectangle {
    width: 200; height: 100; color: "lightblue"
    Text { x: 20; y: 30; text: "In the scene" }
  })";

void showQuick() {
  auto* const window = new QWidget;
  auto* const layout = new QHBoxLayout(window);
  layout->addWidget(new QLabel("A widget"));
  auto* const file = new QTemporaryFile(window);
  file->setFileTemplate(QDir::tempPath() + "/scene-XXXXXX.qml");
  if (file->open()) {
    file->write(scene);
    file->close();
  }
  const QUrl source = QUrl::fromLocalFile(file->fileName());
  auto* const quick = new QQuickWidget(source);
  layout->addWidget(quick);
  auto* const view = new QQuickView(source);
  QWidget* const container = QWidget::createWindowContainer(view);
  container->setMinimumSize(200, 100);
  layout->addWidget(container);
  window->resize(700, 200);
  window->show();
}

}  // namespace

bool showWidgetPage(const QString& name) {
  static const std::map<QString, std::function<void()>> pages = {
      {"labels", showLabelsNearby},   {"controls", showControls},
      {"views", showViews},           {"narrow menu bar", showNarrowMenuBar},
      {"containers", showContainers}, {"menu", showMenu},
      {"combo", showComboBox},        {"dialog", showDialog},
      {"quick", showQuick},           {"many", showMany},
  };
  const auto page = pages.find(name);
  if (page == pages.end()) {
    return false;
  }
  page->second();
  return true;
}

}  // namespace tarnix::integration
