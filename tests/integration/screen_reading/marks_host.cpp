// Widgets of a colour of their own each, named after it, and what can stand in front of a window.

#include <QApplication>
#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWidget>
#include <QQuickWindow>
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

const char* const scene = R"(
import QtQuick
Rectangle {
  width: 120; height: 100; color: "white"
  Rectangle { objectName: "mark " + color; x: 20; y: 30; width: 40; height: 20; color: "%1" }
})";

/// One scene that is drawn into a widget, and one in a window of its own that stands in a widget.
void addScenes(QWidget& window, QQmlEngine& engine) {
  QQmlComponent inWidget(&engine);
  inWidget.setData(QString(scene).arg("#00ffff").toUtf8(), QUrl());
  auto* const widget = new QQuickWidget(&engine, &window);
  widget->setContent(QUrl(), &inWidget, inWidget.create());
  widget->setGeometry(10, 120, 120, 100);
  QQmlComponent inWindow(&engine);
  inWindow.setData(QString(scene).arg("#808000").toUtf8(), QUrl());
  auto* const view = new QQuickWindow;
  qobject_cast<QQuickItem*>(inWindow.create())->setParentItem(view->contentItem());
  QWidget::createWindowContainer(view, &window)->setGeometry(200, 120, 120, 100);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  QApplication application(argumentCount, arguments);
  const QString mode = application.arguments().value(1);
  if (mode == "none") {
    QTimer::singleShot(600'000, &application, &QCoreApplication::quit);
    return QApplication::exec();
  }
  QQmlEngine engine;
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
  if (mode == "scenes") {
    addScenes(window, engine);
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
