#pragma once

#include <QMainWindow>
#include <QString>

class QStackedWidget;
class QTabWidget;

namespace tarnix::integration {

/// A window with tabs, a stack in one of them, that also opens dialogs.
class MainWindow : public QMainWindow {
 public:
  MainWindow();

  /// "tab N", "page N", "dialog", "box", "close", "hide" or "show".
  void act(const QString& word, int number);

 private:
  QTabWidget* tabs_ = nullptr;
  QStackedWidget* pages_ = nullptr;
  QWidget* dialog_ = nullptr;
};

}  // namespace tarnix::integration
