// Widgets of a colour of their own each, named after it, and what can stand in front of a window.

#include <QApplication>
#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QStringListModel>
#include <QThread>
#include <QTimer>
#include <QTreeView>

namespace {

QWidget* mark(QWidget& parent, QColor colour, QRect place) {
  auto* const widget = new QWidget(&parent);
  widget->setObjectName("mark " + colour.name());
  widget->setAutoFillBackground(true);
  widget->setPalette(colour);
  widget->setGeometry(place);
  return widget;
}

void fillWithMarks(QWidget& window) {
  window.setPalette(Qt::white);
  window.resize(400, 300);
  mark(window, "#ff0000", {10, 10, 40, 30});
  QWidget* const inner = mark(window, "#00ff00", {100, 10, 120, 90});
  mark(*inner, "#0000ff", {20, 30, 40, 30});
  auto* const area = new QScrollArea(&window);
  area->setGeometry(250, 10, 100, 100);
  auto* const content = new QWidget;
  content->resize(300, 300);
  mark(*content, "#ff00ff", {20, 10, 30, 20});
  area->setWidget(content);
  auto* const save = new QPushButton("Save", &window);
  save->setGeometry(10, 200, 100, 30);
  (new QLabel("Total", &window))->setGeometry(150, 200, 100, 30);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  QApplication application(argumentCount, arguments);
  const QString mode = application.arguments().value(1);
  if (mode == "none") {
    QTimer::singleShot(600'000, &application, &QCoreApplication::quit);
    return QApplication::exec();
  }
  QWidget window;
  window.setWindowTitle("Marks");
  fillWithMarks(window);
  QStringListModel rows;
  if (mode == "rows") {
    QStringList texts;
    for (int row = 0; row < 10'000; ++row) {
      texts << QString("Row %1").arg(row);
    }
    rows.setStringList(texts);
    auto* const tree = new QTreeView(&window);
    tree->setModel(&rows);
    tree->setGeometry(0, 120, 300, 180);
  }
  window.show();
  QDialog dialog(&window);
  if (mode == "dialog") {
    dialog.setPalette(QColor("#abcdef"));
    dialog.resize(200, 100);
    mark(dialog, "#123456", {20, 30, 40, 20});
    dialog.open();
  }
  QMenu menu(&window);
  if (mode == "menu") {
    menu.addAction("Cut");
    menu.setStyleSheet("QMenu { background: #654321; color: #654321; border: none; }");
    QTimer::singleShot(200, &menu, [&] { menu.popup(window.mapToGlobal(QPoint(60, 120))); });
  }
  QTimer busy;
  if (mode == "busy") {
    QObject::connect(&busy, &QTimer::timeout, [] { QThread::sleep(600); });
    busy.start(3'000);
  }
  return QApplication::exec();
}
