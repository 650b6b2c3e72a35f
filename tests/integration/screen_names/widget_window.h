#pragma once

#include <QMainWindow>
#include <QString>

class QMdiArea;
class QQuickWidget;
class QStackedWidget;
class QTabWidget;
class QToolBox;

namespace tarnix::integration {

/// A window with tabs, each of which has pages of its own in one of the toolkit's ways, that also
/// opens dialogs.
class MainWindow : public QMainWindow {
 public:
  MainWindow();

  /// "tab N", "page N", "sheet N", "tool N", "scene", "exchange N", "dialog", "box", "wizard",
  /// "next", "back", "close", "hide" or "show".
  void act(const QString& word, int number);

 private:
  void showScene();

  QTabWidget* tabs_ = nullptr;
  QStackedWidget* pages_ = nullptr;
  QMdiArea* sheets_ = nullptr;
  QToolBox* tools_ = nullptr;
  QQuickWidget* scene_ = nullptr;
  QWidget* dialog_ = nullptr;
};

}  // namespace tarnix::integration
