// `widget_gallery PAGE` shows one of the pages of widgets until it is closed.

#include <QApplication>

#include "tests/integration/qt6_screen/widget_pages.h"

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  return tarnix::integration::showWidgetPage(QApplication::arguments().value(1))
             ? QApplication::exec()
             : 2;
}
